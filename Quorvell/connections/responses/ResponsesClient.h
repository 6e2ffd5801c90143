// SPDX-License-Identifier: MIT
// Asks the Responses service one question at a time and reads the answer while it streams in.
#pragma once

#include "Quorvell/connections/life/LiveTimeLimits.h"
#include "Quorvell/connections/web/WebExchange.h"
#include "QuorvellCore/live/wire/responses/ResponsesRequest.h"
#include "QuorvellCore/live/wire/responses/ResponsesStreamEvent.h"
#include "QuorvellCore/live/wire/responses/ResponsesStreamParser.h"
#include "QuorvellCore/live/wire/transport/ServerSentEvents.h"

#include <QNetworkAccessManager>

#include <functional>
#include <memory>

namespace quorvell {

/// Main thread.
class ResponsesClient {
public:
    /// Each may ask again, cancel or destroy the client.
    struct Reports {
        std::function<void(ResponsesStreamEvent event)> streamed{};
        /// Instead of the stream's own end: refused, lost or cut off. Once.
        std::function<void(const ConnectionFailure& failure)> failed{};
    };

    /// `web` outlives the client.
    ResponsesClient(QNetworkAccessManager& web, LiveTimeLimits limits)
        : m_web(web)
        , m_limits(limits)
    {
    }
    ~ResponsesClient() { cancel(); }
    ResponsesClient(const ResponsesClient&) = delete;
    ResponsesClient& operator=(const ResponsesClient&) = delete;

    /// What still runs is cancelled first.
    void ask(const LiveAccess& access, const ResponsesRequest& question, Reports reports);
    void cancel() { m_running.reset(); }

private:
    struct Running;

    QNetworkAccessManager& m_web;
    LiveTimeLimits m_limits;
    std::shared_ptr<Running> m_running; ///< Shared only with its own reports while they are made.
};

} // namespace quorvell
