// SPDX-License-Identifier: MIT
#include "Quorvell/deciders/Deciders.h"

#include "Quorvell/deciders/http/CurlDecisionHTTP.h"
#include "Quorvell/deciders/planner/PlannerClient.h"

#include <memory>
#include <utility>

namespace quorvell {

Deciders Deciders::create(const DeciderChoice& choice, const WebProxy& proxy, SharedPimBreaker::Clock now)
{
    const auto http = std::make_shared<CurlDecisionHTTP>(proxy);
    Deciders deciders{.mode = choice.mode};
    if (choice.selector) {
        const auto& [url, key] = *choice.selector;
        const auto breaker = std::make_shared<SharedPimBreaker>(std::move(now));
        deciders.selector = PimSelector{.apiKey = key, .http = http, .host = url, .breaker = breaker};
        deciders.dismissal = {.apiKey = key, .http = http, .host = url, .breaker = breaker};
    }
    if (choice.planner)
        deciders.planner = [client = PlannerClient{*choice.planner, http}](const DecisionContext& context,
                               std::stop_token stop) { return client.decide(context, std::move(stop)); };
    return deciders;
}

} // namespace quorvell
