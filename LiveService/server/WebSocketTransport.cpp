// SPDX-License-Identifier: MIT
#include "LiveService/server/WebSocketTransport.h"

#include <utility>

namespace quorvell {

namespace {

using Kind = WebSocketFrame::Kind;

constexpr int abnormalClosure = 1006; ///< Never sent: the connection just ends.
constexpr int normalClosure = 1000;

} // namespace

WebSocketTransport::WebSocketTransport(std::unique_ptr<QTcpSocket> socket, std::chrono::milliseconds pongDelay)
    : m_socket(std::move(socket))
    , m_secure(qobject_cast<QSslSocket*>(m_socket.get()))
    , m_pongDelay(pongDelay)
{
    m_socket->setReadBufferSize(readAtOnce);
}

WebSocketTransport::~WebSocketTransport()
{
    // A socket that is closed by its end still speaks.
    disconnect(m_socket.get(), nullptr, this, nullptr);
}

void WebSocketTransport::begin(Reports reports)
{
    m_reports = std::move(reports);
    connect(m_socket.get(), &QTcpSocket::disconnected, this, [this] { m_reports.lost(); });
    connect(m_socket.get(), &QTcpSocket::readyRead, this, &WebSocketTransport::read);
    connect(m_socket.get(), &QTcpSocket::bytesWritten, this, &WebSocketTransport::sendOwedPong);
    if (m_secure)
        connect(m_secure, &QSslSocket::encryptedBytesWritten, this, &WebSocketTransport::sendOwedPong);
    connect(&m_ping, &QTimer::timeout, this, &WebSocketTransport::ping);
    m_ping.start(pingPeriod);
    // What came behind the request is looked at when whoever owns this is ready for it.
    QMetaObject::invokeMethod(
        this, [this] { read(); }, Qt::QueuedConnection);
}

void WebSocketTransport::read()
{
    while (!m_isFrozen && m_socket->bytesAvailable() > 0) {
        // More than there can be: only then an encrypted connection goes on to decrypt what it holds.
        const QByteArray bytes = m_socket->read(2 * readAtOnce);
        for (WebSocketReader::Piece& piece : m_reader.add({bytes.constData(), static_cast<std::size_t>(bytes.size())}))
            take(std::move(piece));
        // What comes behind it is read and thrown away until the client is gone: closed upon, it might lose the code.
        if (m_reader.problem() != 0)
            close(m_reader.problem(), "This is no frame that is taken here.");
    }
}

void WebSocketTransport::take(WebSocketReader::Piece piece)
{
    switch (piece.kind) {
    case Kind::text:
        if (!m_isClosing)
            m_reports.textReceived(std::move(piece.payload));
        return;
    case Kind::binary:
        if (!m_isClosing)
            m_reports.nonsenseReceived();
        return;
    case Kind::ping:
        return pong(std::move(piece.payload));
    case Kind::pong:
        m_awaitsPong = false;
        return;
    case Kind::close:
        close(piece.code == WebSocketReader::noCode ? normalClosure : piece.code, {});
        m_socket->disconnectFromHost();
        return;
    case Kind::continuation:
        return; // The reader has put it to its message.
    }
}

void WebSocketTransport::pong(std::string payload)
{
    if (m_pongDelay == m_pongDelay.zero()) {
        m_owedPong = std::move(payload);
        return sendOwedPong();
    }
    QTimer::singleShot(m_pongDelay, this, [this, payload = std::move(payload)] { write(Kind::pong, payload); });
}

void WebSocketTransport::sendOwedPong()
{
    if (!m_owedPong || unsentBytes() > unsentWithPongs)
        return;
    const std::string payload = std::move(*m_owedPong);
    m_owedPong.reset();
    write(Kind::pong, payload);
}

void WebSocketTransport::send(const std::string& text)
{
    if (m_isFrozen || m_isClosing)
        return;
    if (unsentBytes() > longestUnsent)
        m_socket->abort();
    else
        write(Kind::text, text);
}

qint64 WebSocketTransport::unsentBytes() const
{
    return m_socket->bytesToWrite() + (m_secure ? m_secure->encryptedBytesToWrite() : 0);
}

void WebSocketTransport::close(int code, std::string_view reason)
{
    if (std::exchange(m_isClosing, true))
        return;
    m_ping.stop();
    if (code == abnormalClosure || m_isFrozen) {
        m_socket->flush();
        m_socket->abort();
        return;
    }
    write(Kind::close, WebSocketFrame::closePayload(code, reason));
    m_socket->flush();
    // A client that does not answer the close is not waited for.
    QTimer::singleShot(closePatience, this, [this] { m_socket->abort(); });
}

void WebSocketTransport::abort()
{
    m_socket->abort();
}

void WebSocketTransport::freeze()
{
    m_isFrozen = true;
    m_ping.stop();
}

void WebSocketTransport::ping()
{
    if (m_awaitsPong) {
        m_socket->abort();
        return;
    }
    m_awaitsPong = true;
    write(Kind::ping, {});
}

void WebSocketTransport::write(Kind kind, std::string_view payload)
{
    if (m_isFrozen || (m_isClosing && kind != Kind::close))
        return;
    const std::string frame = WebSocketFrame::bytes(kind, payload);
    m_socket->write(frame.data(), static_cast<qint64>(frame.size()));
}

} // namespace quorvell
