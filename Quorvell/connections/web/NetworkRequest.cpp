// SPDX-License-Identifier: MIT
#include "Quorvell/connections/web/NetworkRequest.h"

#include <QSslConfiguration>
#include <QUrl>

namespace quorvell {

QNetworkRequest networkRequest(const WebRequest& request)
{
    QNetworkRequest converted{QUrl(QString::fromStdString(request.url))};
    for (const auto& [name, value] : request.headers)
        converted.setRawHeader(QByteArray::fromStdString(name), QByteArray::fromStdString(value));
    QSslConfiguration security = QSslConfiguration::defaultConfiguration();
    security.setPeerVerifyMode(QSslSocket::VerifyPeer);
    converted.setSslConfiguration(security);
    converted.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    converted.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    converted.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    converted.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
    return converted;
}

} // namespace quorvell
