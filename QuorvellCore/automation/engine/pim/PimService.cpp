// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/engine/pim/PimService.h"

#include <utility>

namespace quorvell {

bool PimService::isSetUp() const
{
    return http && !host.empty() && !apiKey.empty();
}

std::optional<Json> PimService::ask(const Json& state, const Json& questions, std::chrono::milliseconds timeout,
    std::stop_token stop, const std::function<bool(const Json& reply)>& isUsable) const
{
    if (!isSetUp() || stop.stop_requested() || (breaker && !breaker->allows()))
        return std::nullopt;
    const Json body = {{"model", model}, {"state", state}, {"questions", questions}};
    const std::string base = host.ends_with('/') ? host.substr(0, host.size() - 1) : host;
    auto answer = http->post(base + std::string(path), {{"Authorization", "Bearer " + apiKey}}, body, timeout, stop);
    const auto* error = std::get_if<DecisionError>(&answer);
    if (stop.stop_requested() || (error && error->kind == DecisionError::Kind::cancelled))
        return std::nullopt;
    const bool answered = !error && isUsable(std::get<Json>(answer));
    if (breaker)
        breaker->record(answered);
    return answered ? std::optional(std::move(std::get<Json>(answer))) : std::nullopt;
}

Json pimChoiceQuestion(std::string_view instructions, const Json& criteria)
{
    return {{"type", "choice"}, {"instructions", instructions}, {"criteria", criteria}};
}

} // namespace quorvell
