// SPDX-License-Identifier: MIT
// Accepts connections, with TLS where it has a certificate; refuses with an HTTP status what shows no key or asks for
// something else; hands WebSockets and posted requests on.
#pragma once

#include "LiveService/server/HttpAnswer.h"
#include "LiveService/server/ServiceRoute.h"

#include <QHostAddress>
#include <QObject>
#include <QSslConfiguration>
#include <QTcpServer>
#include <QWebSocketServer>

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

class QWebSocket;

namespace quorvell {

class StallingSocket;

/// Lives on the main thread.
class ServiceDoor : public QObject {
public:
    static constexpr std::chrono::milliseconds patience{5'000}; ///< For a whole head, and again for a whole body.
    static constexpr std::size_t mostWaiting = 32; ///< Connections whose request is awaited; more are closed at once.

    /// Somebody who shows the key. `number` counts them from 1 on.
    struct Guest {
        ServiceRoute::Kind kind = ServiceRoute::Kind::openAISocket;
        int number = 0;
    };
    struct Handlers {
        std::function<std::optional<HttpResponse>(Guest)> refuse; ///< Nothing lets the guest in.
        /// `wire` is null where the connection cannot be stalled.
        std::function<void(Guest, std::unique_ptr<QWebSocket>, StallingSocket* wire)> webSocketOpened;
        std::function<void(Guest, std::string body, HttpAnswer)> posted;
    };

    ServiceDoor(std::string token, const std::optional<QSslConfiguration>& tls, Handlers handlers);

    /// Port 0 takes any that is free. False when the address cannot be had; problem() says why.
    bool listen(const QHostAddress& host, std::uint16_t port);
    void stop();
    std::uint16_t port() const { return m_listener->serverPort(); }
    QString problem() const { return m_listener->errorString(); }

private:
    struct Waiting {
        std::optional<HttpRequest> request; ///< Its body is still awaited.
        Guest guest;
    };

    void acceptWaiting();
    void giveUpLater(QTcpSocket* socket);
    void read(QTcpSocket* socket);
    void readHead(QTcpSocket* socket);
    void readBody(QTcpSocket* socket);
    void letIn(QTcpSocket* socket, const HttpRequest& request, Guest guest);
    void refuse(QTcpSocket* socket, const HttpResponse& response);
    void takeUpgraded();

    std::string m_token;
    Handlers m_handlers;
    // These outlive the listener, whose sockets leave them as they end.
    std::map<QTcpSocket*, Waiting> m_waiting;
    std::map<std::uint16_t, std::pair<Guest, QTcpSocket*>> m_upgrading; ///< By the port of the other side.
    std::unique_ptr<QTcpServer> m_listener;
    QWebSocketServer m_upgrader; ///< Never listens itself: it has no way to refuse with a status.
    int m_guests = 0;
};

} // namespace quorvell
