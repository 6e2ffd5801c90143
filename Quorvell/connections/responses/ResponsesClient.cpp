// SPDX-License-Identifier: MIT
#include "Quorvell/connections/responses/ResponsesClient.h"

#include "Quorvell/connections/web/ExchangeChoice.h"
#include "QuorvellCore/live/wire/responses/ResponsesEndpoint.h"

#include <utility>

namespace quorvell {

namespace {

using Kind = ConnectionFailure::Kind;

constexpr std::size_t longestStream = 64 * 1024 * 1024;
constexpr int tooLarge = 1009;

} // namespace

/// One question. Let go while it reports, it stays until the report is made and says nothing more.
struct ResponsesClient::Running : std::enable_shared_from_this<Running> {
    explicit Running(Reports given)
        : reports(std::move(given))
    {
    }

    void read(std::string_view bytes);
    void fail(const ConnectionFailure& failure);

    Reports reports;
    bool isOver = false;
    ServerSentEvents events;
    ResponsesStreamParser parser;
    std::unique_ptr<WebExchange> exchange;
};

void ResponsesClient::Running::read(std::string_view bytes)
{
    const std::weak_ptr<Running> self = weak_from_this();
    for (const ServerSentEvent& event : events.add(bytes)) {
        for (ResponsesStreamEvent& fact : parser.read(event.data)) {
            const auto kept = self.lock();
            if (!kept || isOver)
                return;
            isOver = std::holds_alternative<responses_event::Ended>(fact);
            reports.streamed(std::move(fact));
            if (kept.use_count() == 1)
                return;
        }
    }
    if (events.isOverfull())
        fail({Kind::closed, tooLarge});
}

void ResponsesClient::Running::fail(const ConnectionFailure& failure)
{
    const auto kept = shared_from_this();
    if (!std::exchange(isOver, true))
        reports.failed(failure);
}

void ResponsesClient::ask(const LiveAccess& access, const ResponsesRequest& question, Reports reports)
{
    cancel();
    m_running = std::make_shared<Running>(std::move(reports));
    Running& running = *m_running;
    WebExchange::Reports web;
    web.received = [&running](std::string_view bytes) { running.read(bytes); };
    // A stream that ends by itself has said so before.
    web.ended = [&running] { running.fail({Kind::closed, LiveClosure::abnormal, "the answer broke off"}); };
    web.failed = [&running](const ConnectionFailure& failure) { running.fail(failure); };
    running.exchange =
        beginExchange(m_web, access.line, ResponsesEndpoint{access.address()}.request(access.key, question),
            std::move(web), WebExchange::Limits{m_limits.streamSilence, m_limits.streamSilence, longestStream});
}

} // namespace quorvell
