// SPDX-License-Identifier: MIT
#include "LiveService/server/StallingSocket.h"

#include <QTimer>

#include <utility>

namespace quorvell {

namespace {

constexpr unsigned char finalPong = 0x8A; ///< First byte of a pong frame; its second is the payload's length.
constexpr unsigned char lengthBits = 0x7F;

} // namespace

qint64 StallingSocket::bytesAvailable() const
{
    return m_isFrozen ? 0 : QTcpSocket::bytesAvailable();
}

qint64 StallingSocket::writeData(const char* data, qint64 size)
{
    if (m_isFrozen || isHeldPong(data, size))
        return size;
    return QTcpSocket::writeData(data, size);
}

/// A frame's head and its payload are written one after the other, and a text never starts with the byte of a pong.
bool StallingSocket::isHeldPong(const char* data, qint64 size)
{
    const bool goesOn = m_pongPayload > 0;
    if (m_pongDelay == m_pongDelay.zero() || size == 0)
        return false;
    if (!goesOn) {
        if (static_cast<unsigned char>(data[0]) != finalPong || size < 2)
            return false;
        m_pongPayload = 2 + (static_cast<unsigned char>(data[1]) & lengthBits);
    }
    m_pong.append(data, static_cast<qsizetype>(size));
    m_pongPayload -= size;
    if (m_pongPayload > 0)
        return true;
    m_pongPayload = 0;
    QTimer::singleShot(m_pongDelay, this,
        [this, pong = std::exchange(m_pong, {})] { QTcpSocket::writeData(pong.constData(), pong.size()); });
    return true;
}

} // namespace quorvell
