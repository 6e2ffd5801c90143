// SPDX-License-Identifier: MIT
#include "LiveService/model/ModelLine.h"

#include <QNetworkProxy>
#include <QNetworkRequest>
#include <QPointer>
#include <QSslConfiguration>
#include <QUrl>

#include <utility>

namespace quorvell {

/// Never deleted at once: it may be on the way out of its own signal.
void ModelLine::Abandon::operator()(QNetworkReply* reply) const
{
    if (!reply->isFinished())
        reply->abort();
    reply->deleteLater();
}

ModelLine::ModelLine(ServiceAddress address, Reports reports)
    : m_address(std::move(address))
    , m_reports(std::move(reports))
{
    m_web.setProxy(QNetworkProxy::NoProxy);
    QObject::connect(&m_next, &QTimer::timeout, &m_next, [this] { piecesArrived(); });
}

ModelLine::~ModelLine()
{
    stop();
}

void ModelLine::ask(const std::string& path, const std::string& body)
{
    stop();
    QNetworkRequest request{QUrl(QString::fromStdString(m_address.webUrl(path)))};
    request.setRawHeader("Content-Type", "application/json");
    request.setRawHeader("Accept", "text/event-stream, application/json");
    request.setRawHeader("Accept-Encoding", "identity"); // Nothing is unpacked, so nothing grows in it.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    QSslConfiguration security = QSslConfiguration::defaultConfiguration();
    security.setPeerVerifyMode(QSslSocket::VerifyPeer);
    request.setSslConfiguration(security);
    m_context = std::make_unique<QObject>();
    m_reply.reset(m_web.post(request, QByteArray::fromStdString(body)));
    QNetworkReply* reply = m_reply.get();
    // Once the answer has begun: of what is set before, the library's thread keeps to nothing.
    QObject::connect(
        reply, &QNetworkReply::metaDataChanged, m_context.get(), [reply] { reply->setReadBufferSize(4 * mostAtOnce); });
    QObject::connect(reply, &QNetworkReply::readyRead, m_context.get(), [this] { piecesArrived(); });
    QObject::connect(reply, &QNetworkReply::finished, m_context.get(), [this] {
        if (m_reply->bytesAvailable() == 0)
            finished();
    });
}

void ModelLine::stop()
{
    m_next.stop();
    if (m_reply)
        m_reply->disconnect(m_context.get()); // Not of all: the library calls off a request by signals of its own.
    m_reply.reset();
    if (m_context)
        m_context.release()->deleteLater(); // It may be on the way out of a slot of its own.
}

bool ModelLine::isSuccess() const
{
    const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    return status >= 200 && status <= 299;
}

void ModelLine::piecesArrived()
{
    m_next.stop();
    if (!m_reply)
        return;
    if (!isSuccess()) {
        m_reply->readAll(); // Reported once it has ended: the library does not take it well to be called off in there.
        return;
    }
    const QPointer<QObject> isThisRequest(m_context.get());
    const QByteArray piece = m_reply->read(mostAtOnce);
    if (!piece.isEmpty())
        m_reports.sent({piece.constData(), static_cast<std::size_t>(piece.size())});
    if (!isThisRequest || isThisRequest != m_context.get())
        return;
    if (m_reply->bytesAvailable() > 0)
        m_next.start(0);
    else if (m_reply->isFinished())
        finished();
}

void ModelLine::finished()
{
    const bool hasStatus = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid();
    if (hasStatus && !isSuccess())
        return end(ModelEnd::refused);
    if (m_reply->error() == QNetworkReply::NoError)
        return end(ModelEnd::whole);
    if (m_reply->error() == QNetworkReply::SslHandshakeFailedError)
        return end(ModelEnd::untrusted);
    end(hasStatus ? ModelEnd::brokenOff : ModelEnd::unreachable);
}

void ModelLine::end(ModelEnd how)
{
    stop();
    m_reports.ended(how);
}

} // namespace quorvell
