// SPDX-License-Identifier: MIT
// Where clients come in: reads the head of every request, answers with a status whoever shows no key or asks for
// something else; hands WebSockets and posted requests on.
#pragma once

#include "LiveService/server/DoorListener.h"
#include "LiveService/server/HttpAnswer.h"
#include "LiveService/server/LineListener.h"
#include "LiveService/server/ServiceRoute.h"

#include <QHostAddress>
#include <QObject>
#include <QSslConfiguration>
#include <QTcpSocket>

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace quorvell {

/// Lives on the main thread. Whoever has shown no key is counted and timed from the first moment on, the agreement on
/// encryption included; when there are too many, the oldest of them gives way. So whoever shows the key at once is
/// always let in, however many there are who never do.
class ServiceDoor : public QObject {
public:
    static constexpr std::chrono::milliseconds patience{5'000}; ///< For a whole head, and again for a whole body.
    static constexpr std::chrono::milliseconds answerPatience{120'000}; ///< To make an answer and have it read.
    static constexpr std::size_t mostStrangers = 32; ///< Connections that have not shown the key yet.
    static constexpr std::size_t mostBodies = 8; ///< Awaited at once, of clients with the key: 16 MiB each at most.

    /// Somebody who shows the key. `number` counts them from 1 on.
    struct Guest {
        ServiceRoute::Kind kind = ServiceRoute::Kind::openAISocket;
        int number = 0;
    };
    struct Handlers {
        std::function<std::optional<HttpResponse>(Guest)> refuse; ///< Nothing lets the guest in.
        std::function<void(Guest, std::unique_ptr<QTcpSocket>)> webSocketOpened; ///< Its request has been answered.
        std::function<void(Guest, std::string body, HttpAnswer)> posted;
    };

    ServiceDoor(std::string token, const std::optional<QSslConfiguration>& tls, Handlers handlers);

    /// Port 0 takes any that is free. False when the address cannot be had; problem() says why.
    bool listen(const QHostAddress& host, std::uint16_t port);
    /// Beside, or instead: connections that are handed over.
    void serveLine(int descriptor, std::function<void()> ended);
    void stop();
    std::uint16_t port() const { return m_listener.serverPort(); }
    QString problem() const { return m_listener.errorString(); }

private:
    struct Waiting {
        int arrival = 0; ///< Counts up.
        std::optional<HttpRequest> request{}; ///< The key was shown; its body is still awaited.
        Guest guest{};
    };

    void accept(QTcpSocket* socket);
    void makeRoom();
    QTcpSocket* oldestStranger() const;
    std::size_t bodiesAwaited() const;
    void giveUpLater(QTcpSocket* socket);
    void giveUp(QTcpSocket* socket);
    void read(QTcpSocket* socket);
    void readHead(QTcpSocket* socket);
    void readBody(QTcpSocket* socket);
    void letIn(QTcpSocket* socket, const HttpRequest& request, Guest guest);
    void upgrade(QTcpSocket* socket, const HttpRequest& request, Guest guest);
    void refuse(QTcpSocket* socket, const HttpResponse& response);

    std::string m_token;
    Handlers m_handlers;
    std::map<QTcpSocket*, Waiting> m_waiting; ///< Outlives the listener, whose sockets leave it as they end.
    DoorListener m_listener;
    std::unique_ptr<LineListener> m_line;
    int m_arrivals = 0;
    int m_guests = 0;
};

} // namespace quorvell
