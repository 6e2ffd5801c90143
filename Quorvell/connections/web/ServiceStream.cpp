// SPDX-License-Identifier: MIT
#include "Quorvell/connections/web/ServiceStream.h"

#include <QPointer>
#include <QSslConfiguration>
#include <QSslError>
#include <QTimer>
#include <QUrl>

#include <utility>

namespace quorvell {

namespace {

using Kind = ConnectionFailure::Kind;

bool isEncrypted(const QUrl& url)
{
    return url.scheme() == QLatin1String("wss") || url.scheme() == QLatin1String("https");
}

quint16 portOf(const QUrl& url)
{
    constexpr int securePort = 443;
    constexpr int plainPort = 80;
    return static_cast<quint16>(url.port(isEncrypted(url) ? securePort : plainPort));
}

} // namespace

ServiceStream::ServiceStream(Reports reports)
    : m_reports(std::move(reports))
{
}

ServiceStream::~ServiceStream()
{
    end();
    if (m_isTelling && m_socket)
        m_socket.release()->deleteLater();
}

/// False when the report has destroyed this.
template <typename Report, typename... Values> bool ServiceStream::tell(Report report, Values... values)
{
    const QPointer<QObject> isAlive(&m_context);
    m_isTelling = true;
    report(values...);
    if (isAlive)
        m_isTelling = false;
    return isAlive;
}

void ServiceStream::open(const WebRequest& request, const std::shared_ptr<ServiceLine>& line)
{
    const QUrl url(QString::fromStdString(request.url));
    auto secure = !line && isEncrypted(url) ? std::make_unique<QSslSocket>() : nullptr;
    m_secure = secure.get();
    m_socket = secure ? std::move(secure) : std::make_unique<QTcpSocket>();
    m_socket->setReadBufferSize(mostAtOnce);
    connectSocket();
    if (line)
        return openLine(*line);
    if (!m_secure)
        return m_socket->connectToHost(url.host(), portOf(url));
    QSslConfiguration security = QSslConfiguration::defaultConfiguration();
    security.setPeerVerifyMode(QSslSocket::VerifyPeer);
    m_secure->setSslConfiguration(security);
    m_secure->connectToHostEncrypted(url.host(), portOf(url));
}

void ServiceStream::connectSocket()
{
    if (m_secure) {
        QObject::connect(m_secure, &QSslSocket::encrypted, &m_context, [this] { opened(); });
        QObject::connect(m_secure, &QSslSocket::sslErrors, &m_context, [this](const QList<QSslError>& errors) {
            if (!errors.isEmpty())
                m_untrustedBecause = errors.front().errorString().toStdString();
        });
    } else {
        QObject::connect(m_socket.get(), &QTcpSocket::connected, &m_context, [this] { opened(); });
    }
    QObject::connect(m_socket.get(), &QTcpSocket::readyRead, &m_context, [this] { read(); });
    // Both come where the other side closes an open connection; the first one tells.
    QObject::connect(m_socket.get(), &QTcpSocket::errorOccurred, &m_context,
        [this](QAbstractSocket::SocketError error) { failed(error); });
    QObject::connect(m_socket.get(), &QTcpSocket::disconnected, &m_context,
        [this] { failed(QAbstractSocket::RemoteHostClosedError); });
}

void ServiceStream::openLine(ServiceLine& line)
{
    const int descriptor = line.connect();
    const bool isThere = descriptor >= 0 && m_socket->setSocketDescriptor(descriptor);
    QTimer::singleShot(0, &m_context, [this, isThere] {
        if (isThere)
            opened();
        else
            reportEnd({Kind::nobodyAnswers, 0, "the service is gone"});
    });
}

void ServiceStream::opened()
{
    m_isOpen = true;
    // Messages are small and answered at once; held back to be joined, each would cost 40 ms.
    m_socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    tell(m_reports.opened);
}

/// False when there is nothing, or nobody any more.
bool ServiceStream::read()
{
    if (!m_isOpen || m_hasEnded)
        return false;
    // More than there can be: only then the socket goes on to fetch, or to decrypt, what it has not room for.
    const QByteArray bytes = m_socket->read(4 * mostAtOnce);
    if (bytes.isEmpty())
        return false;
    return tell(m_reports.received, std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
}

void ServiceStream::write(std::string_view bytes)
{
    if (!m_hasEnded)
        m_socket->write(bytes.data(), static_cast<qint64>(bytes.size()));
}

std::int64_t ServiceStream::unsentBytes() const
{
    return m_socket ? m_socket->bytesToWrite() + (m_secure ? m_secure->encryptedBytesToWrite() : 0) : 0;
}

void ServiceStream::failed(QAbstractSocket::SocketError error)
{
    // What it said last has come, and was not looked at.
    const QPointer<QObject> isAlive(&m_context);
    const ConnectionFailure failure = failureOf(error);
    while (read()) { }
    if (isAlive)
        reportEnd(failure);
}

ConnectionFailure ServiceStream::failureOf(QAbstractSocket::SocketError error) const
{
    const std::string text = m_socket->errorString().toStdString();
    if (m_isOpen)
        return {Kind::closed, LiveClosure::abnormal, text};
    if (!m_untrustedBecause.empty() || error == QAbstractSocket::SslHandshakeFailedError)
        return {Kind::untrusted, 0, m_untrustedBecause.empty() ? text : m_untrustedBecause};
    if (error == QAbstractSocket::HostNotFoundError)
        return {Kind::nameUnknown, 0, text};
    return {Kind::nobodyAnswers, 0, text};
}

void ServiceStream::reportEnd(const ConnectionFailure& failure)
{
    if (m_hasEnded)
        return;
    end();
    tell(m_reports.closed, failure);
}

void ServiceStream::end()
{
    if (std::exchange(m_hasEnded, true) || !m_socket)
        return;
    m_socket->disconnect(&m_context);
    m_socket->flush();
    m_socket->abort();
}

QByteArray ServiceStream::headOf(const WebRequest& request, const QByteArray& furtherFields)
{
    const QUrl url(QString::fromStdString(request.url));
    const QByteArray method = request.method == WebRequest::Method::post ? "POST " : "GET ";
    const QByteArray target = url.toEncoded(QUrl::RemoveScheme | QUrl::RemoveAuthority | QUrl::RemoveFragment);
    QByteArray head = method + target + " HTTP/1.1\r\nHost: " + url.authority(QUrl::FullyEncoded).toLatin1();
    for (const auto& [name, value] : request.headers)
        head += "\r\n" + QByteArray::fromStdString(name) + ": " + QByteArray::fromStdString(value);
    return head + "\r\n" + furtherFields + "\r\n";
}

} // namespace quorvell
