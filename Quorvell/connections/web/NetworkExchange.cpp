// SPDX-License-Identifier: MIT
#include "Quorvell/connections/web/NetworkExchange.h"

#include "Quorvell/connections/web/NetworkRequest.h"
#include "Quorvell/connections/web/RetryAfter.h"

#include <QPointer>
#include <QSslError>

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

using Kind = ConnectionFailure::Kind;

constexpr int tooLarge = 1009;

} // namespace

/// Never deleted at once: it may be on the way out of its own signal.
void NetworkExchange::Abandon::operator()(QNetworkReply* reply) const
{
    reply->abort();
    reply->deleteLater();
}

NetworkExchange::NetworkExchange(QNetworkAccessManager& web, const WebRequest& request, Reports reports, Limits limits)
    : m_reports(std::move(reports))
    , m_limits(limits)
{
    QNetworkRequest converted = networkRequest(request);
    const QByteArray body = QByteArray::fromStdString(request.body);
    m_reply.reset(request.method == WebRequest::Method::post ? web.post(converted, body) : web.get(converted));
    QNetworkReply* reply = m_reply.get();
    // Once the answer has begun: of what is set before, the library's thread keeps to nothing.
    QObject::connect(
        reply, &QNetworkReply::metaDataChanged, &m_context, [reply] { reply->setReadBufferSize(4 * mostAtOnce); });
    QObject::connect(&m_next, &QTimer::timeout, &m_context, [this] { piecesArrived(); });
    QObject::connect(reply, &QNetworkReply::readyRead, &m_context, [this] { piecesArrived(); });
    QObject::connect(reply, &QNetworkReply::finished, &m_context, [this] { finishWhenRead(); });
    QObject::connect(reply, &QNetworkReply::sslErrors, &m_context, [this](const QList<QSslError>& errors) {
        if (!errors.isEmpty())
            m_untrustedBecause = errors.front().errorString().toStdString();
    });
    m_patience.setSingleShot(true);
    QObject::connect(&m_patience, &QTimer::timeout, &m_context,
        [this] { fail({m_bytes == 0 ? Kind::openedTooSlowly : Kind::wentSilent}); });
    m_patience.start(m_limits.toAnswer);
}

NetworkExchange::~NetworkExchange()
{
    m_reply->disconnect(&m_context);
}

int NetworkExchange::status() const
{
    return m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

void NetworkExchange::piecesArrived()
{
    m_next.stop();
    if (m_isOver)
        return;
    m_patience.start(m_limits.silence);
    const QPointer<QObject> isAlive(&m_context);
    take(m_reply->read(mostAtOnce));
    if (!isAlive || m_isOver)
        return;
    if (m_reply->bytesAvailable() > 0)
        m_next.start(0);
    else if (m_reply->isFinished())
        finished();
}

void NetworkExchange::take(const QByteArray& piece)
{
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

void NetworkExchange::finishWhenRead()
{
    if (m_reply->bytesAvailable() > 0)
        piecesArrived();
    else if (!m_isOver)
        finished();
}

void NetworkExchange::finished()
{
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

ConnectionFailure NetworkExchange::refusal(int answered) const
{
    ConnectionFailure failure = ConnectionFailure::refusal(answered, m_refusal);
    failure.retryAfter = retryAfter(m_reply->rawHeader("Retry-After").toStdString());
    return failure;
}

ConnectionFailure NetworkExchange::failureOf(QNetworkReply::NetworkError error) const
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

void NetworkExchange::fail(const ConnectionFailure& failure)
{
    if (std::exchange(m_isOver, true))
        return;
    m_patience.stop();
    m_next.stop();
    if (const auto failed = m_reports.failed)
        failed(failure);
}

} // namespace quorvell
