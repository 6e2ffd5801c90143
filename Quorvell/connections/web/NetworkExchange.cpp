// SPDX-License-Identifier: MIT
#include "Quorvell/connections/web/WebExchange.h"

#include "Quorvell/connections/web/NetworkRequest.h"

#include <QDateTime>
#include <QLocale>
#include <QPointer>
#include <QSslError>

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

using Kind = ConnectionFailure::Kind;

constexpr int tooLarge = 1009;

/// A number of seconds, or a date. A day at most: whoever asks for more means never.
std::optional<std::chrono::milliseconds> waitIn(const QByteArray& retryAfter)
{
    constexpr qint64 longest = 24 * 60 * 60;
    bool isNumber = false;
    qint64 seconds = retryAfter.trimmed().toLongLong(&isNumber);
    if (!isNumber) {
        QDateTime date = QLocale::c().toDateTime(
            QString::fromLatin1(retryAfter.trimmed()), QStringLiteral("ddd, dd MMM yyyy hh:mm:ss 'GMT'"));
        date.setTimeSpec(Qt::UTC);
        if (!date.isValid())
            return std::nullopt;
        seconds = QDateTime::currentDateTimeUtc().secsTo(date);
    }
    return std::chrono::seconds(std::clamp<qint64>(seconds, 0, longest));
}

} // namespace

/// Never deleted at once: it may be on the way out of its own signal.
void WebExchange::Abandon::operator()(QNetworkReply* reply) const
{
    reply->abort();
    reply->deleteLater();
}

WebExchange::WebExchange(QNetworkAccessManager& web, const WebRequest& request, Reports reports, Limits limits)
    : m_reports(std::move(reports))
    , m_limits(limits)
{
    QNetworkRequest converted = networkRequest(request);
    const QByteArray body = QByteArray::fromStdString(request.body);
    m_reply.reset(request.method == WebRequest::Method::post ? web.post(converted, body) : web.get(converted));
    QNetworkReply* reply = m_reply.get();
    QObject::connect(reply, &QNetworkReply::readyRead, &m_context, [this] { piecesArrived(); });
    QObject::connect(reply, &QNetworkReply::finished, &m_context, [this] { finished(); });
    QObject::connect(reply, &QNetworkReply::sslErrors, &m_context, [this](const QList<QSslError>& errors) {
        if (!errors.isEmpty())
            m_untrustedBecause = errors.front().errorString().toStdString();
    });
    m_patience.setSingleShot(true);
    QObject::connect(&m_patience, &QTimer::timeout, &m_context,
        [this] { fail({m_bytes == 0 ? Kind::openedTooSlowly : Kind::wentSilent}); });
    m_patience.start(m_limits.toAnswer);
}

WebExchange::~WebExchange()
{
    m_reply->disconnect(&m_context);
}

int WebExchange::status() const
{
    return m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

void WebExchange::piecesArrived()
{
    if (m_isOver)
        return;
    m_patience.start(m_limits.silence);
    const QByteArray piece = m_reply->readAll();
    m_bytes += static_cast<std::size_t>(piece.size());
    if (m_bytes > m_limits.bytes)
        return fail({Kind::closed, tooLarge});
    if (status() < 200 || status() > 299) {
        m_refusal.append(piece.constData(), static_cast<std::size_t>(piece.size()));
        m_refusal.resize(std::min(m_refusal.size(), largestRefusal));
        return;
    }
    if (const auto received = m_reports.received; received && !piece.isEmpty())
        received({piece.constData(), static_cast<std::size_t>(piece.size())});
}

void WebExchange::finished()
{
    const QPointer<QObject> isAlive(&m_context);
    if (m_reply->bytesAvailable() > 0)
        piecesArrived();
    if (!isAlive || m_isOver)
        return;
    const int answered = status();
    if (answered != 0 && (answered < 200 || answered > 299))
        return fail(refusal(answered));
    if (m_reply->error() != QNetworkReply::NoError)
        return fail(failureOf(m_reply->error()));
    m_isOver = true;
    m_patience.stop();
    if (const auto ended = m_reports.ended)
        ended();
}

ConnectionFailure WebExchange::refusal(int answered) const
{
    ConnectionFailure failure = ConnectionFailure::refusal(answered, m_refusal);
    failure.retryAfter = waitIn(m_reply->rawHeader("Retry-After"));
    return failure;
}

ConnectionFailure WebExchange::failureOf(QNetworkReply::NetworkError error) const
{
    const std::string text = m_reply->errorString().toStdString();
    if (!m_untrustedBecause.empty() || error == QNetworkReply::SslHandshakeFailedError)
        return {Kind::untrusted, 0, m_untrustedBecause.empty() ? text : m_untrustedBecause};
    if (error == QNetworkReply::HostNotFoundError)
        return {Kind::nameUnknown, 0, text};
    if (status() != 0)
        return {Kind::closed, LiveClosure::abnormal, text};
    return {Kind::nobodyAnswers, 0, text};
}

void WebExchange::fail(const ConnectionFailure& failure)
{
    if (std::exchange(m_isOver, true))
        return;
    m_patience.stop();
    if (const auto failed = m_reports.failed)
        failed(failure);
}

} // namespace quorvell
