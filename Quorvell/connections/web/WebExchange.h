// SPDX-License-Identifier: MIT
// One request over HTTP and its answer, piece by piece.
#pragma once

#include "Quorvell/connections/life/ConnectionFailure.h"
#include "QuorvellCore/live/wire/transport/WebRequest.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace quorvell {

/// The server's certificate is always verified, and nothing is sent on to another address: the request carries a key.
/// Destroying it cancels it. Main thread.
class WebExchange {
public:
    /// Each may destroy the exchange. Either `ended` or `failed` comes, once; a refusal is a failure with its body.
    struct Reports {
        std::function<void(std::string_view bytes)> received{};
        std::function<void()> ended{};
        std::function<void(const ConnectionFailure& failure)> failed{};
    };
    struct Limits {
        std::chrono::milliseconds toAnswer{20'000}; ///< Until the first byte of the answer.
        std::chrono::milliseconds silence{20'000}; ///< Between two pieces of it.
        std::size_t bytes = 16 * 1024 * 1024;
    };

    static constexpr std::size_t largestRefusal = 64 * 1024;

    WebExchange(QNetworkAccessManager& web, const WebRequest& request, Reports reports, Limits limits);
    ~WebExchange();
    WebExchange(const WebExchange&) = delete;
    WebExchange& operator=(const WebExchange&) = delete;

private:
    struct Abandon {
        void operator()(QNetworkReply* reply) const;
    };

    void piecesArrived();
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
    std::unique_ptr<QNetworkReply, Abandon> m_reply;
    QObject m_context; ///< Receives the reply's signals; goes first.
};

} // namespace quorvell
