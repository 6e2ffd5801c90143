// SPDX-License-Identifier: MIT
// A connection that can be made to fail on purpose: to hang without ending, or to answer pings late.
#pragma once

#include <QByteArray>
#include <QTcpSocket>

#include <chrono>

namespace quorvell {

/// A WebSocket on top of it notices nothing. Lives on the main thread.
class StallingSocket : public QTcpSocket {
public:
    using QTcpSocket::QTcpSocket;

    /// From now on nothing is read and nothing written.
    void freeze() { m_isFrozen = true; }
    /// Every answer to a ping is held back so long.
    void delayPongs(std::chrono::milliseconds time) { m_pongDelay = time; }

    qint64 bytesAvailable() const override;

protected:
    qint64 writeData(const char* data, qint64 size) override;

private:
    bool isHeldPong(const char* data, qint64 size);

    bool m_isFrozen = false;
    std::chrono::milliseconds m_pongDelay{};
    qint64 m_pongPayload = 0; ///< Bytes that still belong to a pong that is held back.
    QByteArray m_pong;
};

} // namespace quorvell
