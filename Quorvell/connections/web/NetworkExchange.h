// SPDX-License-Identifier: MIT
// A request to a service on the network, by the library that owns it.
#pragma once

#include "Quorvell/connections/web/WebExchange.h"
#include "QuorvellCore/live/wire/transport/WebRequest.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>
#include <QTimer>

#include <memory>
#include <string>

namespace quorvell {

/// The server's certificate is always verified, and nothing is sent on to another address: the request carries a key.
/// Main thread.
class NetworkExchange : public WebExchange {
public:
    NetworkExchange(QNetworkAccessManager& web, const WebRequest& request, Reports reports, Limits limits);
    ~NetworkExchange() override;
    NetworkExchange(const NetworkExchange&) = delete;
    NetworkExchange& operator=(const NetworkExchange&) = delete;

private:
    struct Abandon {
        void operator()(QNetworkReply* reply) const;
    };

    void piecesArrived();
    void take(const QByteArray& piece);
    void finishWhenRead();
    void finished();
    int status() const;
    ConnectionFailure refusal(int answered) const;
    ConnectionFailure failureOf(QNetworkReply::NetworkError error) const;
    void fail(const ConnectionFailure& failure);

    Reports m_reports;
    Limits m_limits;
    std::size_t m_bytes = 0; ///< So far.
    std::string m_refusal; ///< The body of an answer that is no success.
    std::string m_untrustedBecause;
    bool m_isOver = false;
    QTimer m_patience;
    QTimer m_next; ///< Runs while more has come than one turn takes.
    std::unique_ptr<QNetworkReply, Abandon> m_reply;
    QObject m_context; ///< Receives the reply's signals; goes first.
};

} // namespace quorvell
