#pragma once

#include "LiveService/server/UpgradeRequest.h"

#include <QHostAddress>
#include <QObject>
#include <QTcpServer>
#include <QWebSocketServer>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <string>

class QTcpSocket;
class QWebSocket;

namespace quorvell {

/// Accepts connections, refuses with an HTTP status what shows no key or asks for something else, and upgrades the
/// rest to WebSockets. Lives on the main thread.
class UpgradeGate : public QObject {
public:
    static constexpr std::chrono::milliseconds patience{5'000}; ///< For a whole request.
    static constexpr std::size_t mostWaiting = 32; ///< Connections without an upgrade; more are closed at once.

    using MayOpen = std::function<bool()>;
    using WebSocketOpened = std::function<void(std::unique_ptr<QWebSocket>)>;

    /// `mayOpen` says whether there is room for another session.
    UpgradeGate(std::string token, MayOpen mayOpen, WebSocketOpened webSocketOpened);

    /// Port 0 takes any that is free. False when the address cannot be had; problem() says why.
    bool listen(const QHostAddress& host, std::uint16_t port);
    void stop();
    std::uint16_t port() const { return m_listener.serverPort(); }
    QString problem() const { return m_listener.errorString(); }

private:
    void acceptWaiting();
    void readRequest(QTcpSocket* socket);
    void refuse(QTcpSocket* socket, const UpgradeVerdict& verdict);
    void upgrade(QTcpSocket* socket);
    void takeUpgraded();

    std::string m_token;
    MayOpen m_mayOpen;
    WebSocketOpened m_webSocketOpened;
    QTcpServer m_listener;
    QWebSocketServer m_upgrader; ///< Never listens itself: it has no way to refuse with a status.
    std::set<QTcpSocket*> m_waiting; ///< Their requests are still awaited.
};

} // namespace quorvell
