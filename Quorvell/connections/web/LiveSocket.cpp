// SPDX-License-Identifier: MIT
#include "Quorvell/connections/web/LiveSocket.h"

#include "Quorvell/connections/web/NetworkRequest.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveParser.h"

#include <QSslConfiguration>
#include <QSslError>
#include <QSslSocket>
#include <QTcpSocket>

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

using Kind = ConnectionFailure::Kind;

constexpr quint64 largestMessage = OpenAILiveParser::limits.maximumBytes;

QString toQString(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace

LiveSocket::LiveSocket(Reports reports, LiveTimeLimits limits)
    : m_reports(std::move(reports))
    , m_limits(limits)
    , m_socket(std::make_unique<QWebSocket>())
{
    m_socket->setMaxAllowedIncomingMessageSize(largestMessage);
    m_socket->setMaxAllowedIncomingFrameSize(largestMessage);
    QSslConfiguration security = QSslConfiguration::defaultConfiguration();
    security.setPeerVerifyMode(QSslSocket::VerifyPeer);
    m_socket->setSslConfiguration(security);
    m_deadline.setSingleShot(true);
    m_pings.setInterval(m_limits.betweenPings);
    connectSocket();
}

LiveSocket::~LiveSocket()
{
    m_socket->disconnect(&m_context);
    m_socket->abort();
}

void LiveSocket::connectSocket()
{
    QWebSocket* socket = m_socket.get();
    QObject::connect(socket, &QWebSocket::connected, &m_context, [this] { socketOpened(); });
    QObject::connect(socket, &QWebSocket::textMessageReceived, &m_context, [this](const QString& text) {
        m_unansweredPings = 0;
        m_reports.textReceived(text.toStdString());
    });
    // JSON too: some services send their texts in binary frames.
    QObject::connect(socket, &QWebSocket::binaryMessageReceived, &m_context, [this](const QByteArray& text) {
        m_unansweredPings = 0;
        m_reports.textReceived(text.toStdString());
    });
    QObject::connect(socket, &QWebSocket::pong, &m_context, [this] { m_unansweredPings = 0; });
    QObject::connect(socket, &QWebSocket::sslErrors, &m_context, [this](const QList<QSslError>& errors) {
        if (!errors.isEmpty())
            m_untrustedBecause = errors.front().errorString().toStdString();
    });
    QObject::connect(socket, qOverload<QAbstractSocket::SocketError>(&QWebSocket::error), &m_context,
        [this](QAbstractSocket::SocketError error) { socketFailed(error); });
    QObject::connect(socket, &QWebSocket::disconnected, &m_context, [this] { socketClosed(); });
    QObject::connect(&m_deadline, &QTimer::timeout, &m_context, [this] { end({Kind::openedTooSlowly}); });
    QObject::connect(&m_pings, &QTimer::timeout, &m_context, [this] { checkLiveness(); });
}

void LiveSocket::open(const WebRequest& request)
{
    m_deadline.start(m_limits.toOpen);
    m_socket->open(networkRequest(request));
}

void LiveSocket::send(std::string_view text)
{
    if (m_hasEnded)
        return;
    // Later, since nothing is reported from inside a call.
    if (unsentBytes() + static_cast<std::int64_t>(text.size()) > mostUnsent)
        return QTimer::singleShot(0, &m_context, [this] { end({Kind::wentSilent}); });
    m_sent = (unsentBytes() > 0 ? m_sent : 0) + static_cast<std::int64_t>(text.size());
    m_socket->sendTextMessage(toQString(text));
}

std::int64_t LiveSocket::unsentBytes() const
{
    std::int64_t bytes = m_socket->bytesToWrite();
    // What is encrypted counts as written there.
    for (const QSslSocket* connection : m_socket->findChildren<QSslSocket*>())
        bytes += connection->encryptedBytesToWrite();
    return bytes;
}

/// Any byte is a sign of life: a long message holds the pongs behind it back. But the library answers every ping by
/// itself, and a service that reads none of the answers would have them hoarded here.
void LiveSocket::bytesArrived()
{
    m_unansweredPings = 0;
    if (unsentBytes() > std::min(m_sent + mostUnsentPongs, mostUnsent))
        end({Kind::wentSilent});
}

void LiveSocket::socketOpened()
{
    m_isOpen = true;
    // Messages are small and answered at once; held back to be joined, each would cost 40 ms.
    for (QTcpSocket* connection : m_socket->findChildren<QTcpSocket*>()) {
        connection->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        QObject::connect(connection, &QTcpSocket::readyRead, &m_context, [this] { bytesArrived(); });
    }
    m_deadline.stop();
    m_pings.start();
    m_reports.opened();
}

void LiveSocket::checkLiveness()
{
    // Counted, not timed: when this program itself was busy, the answers lie there unread.
    if (m_unansweredPings * m_limits.betweenPings >= m_limits.silence)
        return end({Kind::wentSilent});
    ++m_unansweredPings;
    m_socket->ping();
}

void LiveSocket::socketClosed()
{
    if (m_isOpen)
        return end({Kind::closed, static_cast<int>(m_socket->closeCode()), m_socket->closeReason().toStdString()});
    // While opening, this comes before the error that says why.
    QTimer::singleShot(0, &m_context, [this] { end(failureOf(m_socket->error())); });
}

void LiveSocket::socketFailed(QAbstractSocket::SocketError error)
{
    // A close frame comes with its own code and reason, which `disconnected` delivers; what is left is an abort.
    const bool wasToldWhy = m_socket->closeCode() != QWebSocketProtocol::CloseCodeNormal;
    if (!(m_isOpen && wasToldWhy))
        end(failureOf(error));
}

ConnectionFailure LiveSocket::failureOf(QAbstractSocket::SocketError error) const
{
    const std::string text = m_socket->errorString().toStdString();
    if (m_isOpen)
        return {Kind::closed, LiveClosure::abnormal, text};
    if (!m_untrustedBecause.empty() || error == QAbstractSocket::SslHandshakeFailedError)
        return {Kind::untrusted, 0, m_untrustedBecause.empty() ? text : m_untrustedBecause};
    if (error == QAbstractSocket::HostNotFoundError)
        return {Kind::nameUnknown, 0, text};
    // Whatever the error is called: a status in its text means that a server answered and refused the upgrade. That is
    // all the library tells of the answer: how long a busy service asks to be left alone stays unknown here.
    if (const int status = ConnectionFailure::statusIn(text); status != 0)
        return {Kind::refusedRequest, status, text};
    return {Kind::nobodyAnswers, 0, text};
}

void LiveSocket::end(const ConnectionFailure& failure)
{
    if (std::exchange(m_hasEnded, true))
        return;
    m_deadline.stop();
    m_pings.stop();
    m_socket->disconnect(&m_context);
    m_socket->abort();
    m_reports.closed(failure);
}

} // namespace quorvell
