// SPDX-License-Identifier: MIT
// A WebSocket that never hangs: opening has a limit, silence is noticed, messages are bounded, and every way to end
// comes out as one ConnectionFailure.
#pragma once

#include "Quorvell/connections/life/ConnectionFailure.h"
#include "Quorvell/connections/life/LiveTimeLimits.h"
#include "QuorvellCore/live/wire/transport/WebRequest.h"

#include <QObject>
#include <QTimer>
#include <QWebSocket>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace quorvell {

/// The server's certificate is always verified. Main thread; used once.
class LiveSocket {
public:
    struct Reports {
        std::function<void()> opened;
        std::function<void(const std::string& text)> textReceived;
        std::function<void(const ConnectionFailure& failure)> closed; ///< Once, an orderly end included.
    };

    /// Sound that the network does not take is dropped rather than hoarded: half a minute of it, as text.
    static constexpr std::int64_t mostUnsentSound = 2 * 1024 * 1024;

    /// Beyond it the service is taken for gone: it reads nothing any more, whatever it still says. The largest message
    /// twice over.
    static constexpr std::int64_t mostUnsent = 32 * 1024 * 1024;
    /// While nothing has been asked for that large: pings that a service sends without reading the answers.
    static constexpr std::int64_t mostUnsentPongs = 4 * 1024 * 1024;

    /// A report must not destroy the socket.
    LiveSocket(Reports reports, LiveTimeLimits limits);
    ~LiveSocket();
    LiveSocket(const LiveSocket&) = delete;
    LiveSocket& operator=(const LiveSocket&) = delete;

    void open(const WebRequest& request);
    void send(std::string_view text);
    /// Accepted for sending and not yet taken by the network.
    std::int64_t unsentBytes() const;
    /// Says good-bye in an orderly way; `closed` follows, but not within any limit.
    void close() { m_socket->close(); }

private:
    void connectSocket();
    void socketOpened();
    void socketClosed();
    void socketFailed(QAbstractSocket::SocketError error);
    void checkLiveness();
    void bytesArrived();
    ConnectionFailure failureOf(QAbstractSocket::SocketError error) const;
    void end(const ConnectionFailure& failure);

    Reports m_reports;
    LiveTimeLimits m_limits;
    bool m_isOpen = false;
    bool m_hasEnded = false;
    std::string m_untrustedBecause;
    std::unique_ptr<QWebSocket> m_socket;
    QTimer m_deadline; ///< Of opening.
    QTimer m_pings;
    std::int64_t m_sent = 0; ///< Bytes of messages since nothing was unsent.
    int m_unansweredPings = 0; ///< Since the last sign of life.
    QObject m_context; ///< Receives the socket's signals; goes first.
};

} // namespace quorvell
