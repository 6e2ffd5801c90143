// SPDX-License-Identifier: MIT
// A client over a WebSocket.
#pragma once

#include "LiveService/server/SessionTransport.h"
#include "QuorvellCore/live/wire/transport/WebSocketReader.h"

#include <QObject>
#include <QSslSocket>
#include <QTcpSocket>
#include <QTimer>

#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace quorvell {

/// One that answers no ping, or reads no faster than it is told things, is let go.
class WebSocketTransport : public QObject, public SessionTransport {
public:
    static constexpr std::size_t longestMessage = 16 * 1024 * 1024; ///< A longer one closes the connection with 1009.
    static constexpr qint64 longestUnsent = 4 * 1024 * 1024;
    /// While more than that is unsent, only the last ping is answered, as RFC 6455 allows: a client that asks and never
    /// reads would have the answers hoarded here.
    static constexpr qint64 unsentWithPongs = 64 * 1024;
    static constexpr qint64 readAtOnce = 64 * 1024; ///< What is not read waits with the client.
    static constexpr std::chrono::milliseconds pingPeriod{20'000};
    static constexpr std::chrono::milliseconds closePatience{2'000};

    /// Takes over a connection that has just become a WebSocket. Pongs are sent so much later.
    explicit WebSocketTransport(std::unique_ptr<QTcpSocket> socket, std::chrono::milliseconds pongDelay = {});
    ~WebSocketTransport() override;

    void begin(Reports reports) override;
    void send(const std::string& text) override;
    void close(int code, std::string_view reason) override;
    void abort() override;
    void freeze() override;

private:
    void read();
    void take(WebSocketReader::Piece piece);
    void pong(std::string payload);
    void sendOwedPong();
    void ping();
    qint64 unsentBytes() const;
    void write(WebSocketFrame::Kind kind, std::string_view payload);

    std::unique_ptr<QTcpSocket> m_socket;
    QSslSocket* m_secure; ///< The same where it is encrypted, else null: what is encrypted counts as written there.
    std::chrono::milliseconds m_pongDelay;
    Reports m_reports;
    WebSocketReader m_reader{WebSocketReader::From::client, longestMessage};
    std::optional<std::string> m_owedPong;
    bool m_awaitsPong = false;
    bool m_isFrozen = false;
    bool m_isClosing = false; ///< A close was sent; the rest is only awaited.
    QTimer m_ping;
};

} // namespace quorvell
