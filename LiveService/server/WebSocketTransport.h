// SPDX-License-Identifier: MIT
// A client over a WebSocket.
#pragma once

#include "LiveService/server/SessionTransport.h"

#include <QObject>
#include <QTimer>
#include <QWebSocket>

#include <chrono>
#include <memory>

namespace quorvell {

class StallingSocket;

/// One that answers no ping, or reads no faster than it is told things, is let go.
class WebSocketTransport : public QObject, public SessionTransport {
public:
    static constexpr qint64 longestMessage = 16 * 1024 * 1024; ///< A longer one closes the connection with 1009.
    static constexpr qint64 longestUnsent = 4 * 1024 * 1024;
    static constexpr std::chrono::milliseconds pingPeriod{20'000};
    static constexpr std::chrono::milliseconds closePatience{2'000};

    /// Takes the socket over. `wire` is what carries it, where it can be stalled, else null.
    WebSocketTransport(std::unique_ptr<QWebSocket> socket, StallingSocket* wire);
    ~WebSocketTransport() override;

    void begin(Reports reports) override;
    void send(const std::string& text) override;
    void close(int code, std::string_view reason) override;
    void abort() override;
    void freeze() override;

private:
    void ping();

    std::unique_ptr<QWebSocket> m_socket;
    StallingSocket* m_wire; ///< Owned by the WebSocket.
    Reports m_reports;
    bool m_awaitsPong = false;
    bool m_isFrozen = false;
    QTimer m_ping;
};

} // namespace quorvell
