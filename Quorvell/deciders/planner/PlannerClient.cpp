// SPDX-License-Identifier: MIT
#include "Quorvell/deciders/planner/PlannerClient.h"

#include "QuorvellCore/automation/engine/planner/PlannerReply.h"
#include "QuorvellCore/text/UUID.h"

#include <array>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <random>
#include <utility>

namespace quorvell {

namespace {

using std::chrono::steady_clock;

std::chrono::milliseconds timeUntil(steady_clock::time_point deadline)
{
    return std::chrono::ceil<std::chrono::milliseconds>(deadline - steady_clock::now());
}

/// From the system's own source: what is on the screen must not be able to foresee it.
std::string randomMark()
{
    std::random_device chance;
    std::array<std::uint8_t, 16> bytes{};
    for (std::uint8_t& byte : bytes)
        byte = static_cast<std::uint8_t>(chance());
    return uuidText(bytes);
}

void waitFor(std::chrono::milliseconds time, const std::stop_token& stop)
{
    std::mutex mutex;
    std::unique_lock lock(mutex);
    std::condition_variable_any().wait_for(lock, stop, time, [] { return false; });
}

/// Why it is none that can be done here; nothing where it can.
std::optional<DecisionProblem> problemOf(
    const std::variant<AutomationDecision, DecisionProblem>& reading, const DecisionContext& context)
{
    const auto* const decision = std::get_if<AutomationDecision>(&reading);
    return decision != nullptr ? decisionProblem(*decision, context.observation) : std::get<DecisionProblem>(reading);
}

} // namespace

PlannerAnswer PlannerClient::decide(const DecisionContext& context, std::stop_token stop) const
{
    constexpr int tries = 2;
    const Deadline deadline = steady_clock::now() + patience;
    std::optional<PlannerRepair> repair;
    for (int count = 0; count < tries; ++count) {
        auto answer = answerTo(context, repair, deadline, stop);
        if (auto* const error = std::get_if<DecisionError>(&answer))
            return std::move(*error);
        std::string& text = std::get<std::string>(answer);
        auto reading = readDecision(text);
        auto problem = problemOf(reading, context);
        if (!problem)
            return std::get<AutomationDecision>(std::move(reading));
        repair = PlannerRepair{std::move(text), std::move(problem->text)};
    }
    return DecisionError{DecisionError::Kind::malformed, 0,
        access.title + " answered twice, and neither answer is a step that can be done here."};
}

std::variant<std::string, DecisionError> PlannerClient::answerTo(const DecisionContext& context,
    const std::optional<PlannerRepair>& repair, Deadline deadline, const std::stop_token& stop) const
{
    const Reply reply = ask(plannerRequest(access.style, access.model, context, randomMark(), repair), deadline, stop);
    if (const auto* const error = std::get_if<DecisionError>(&reply))
        return told(*error);
    return readPlannerReply(access.style, std::get<Json>(reply));
}

PlannerClient::Reply PlannerClient::ask(const Json& body, Deadline deadline, const std::stop_token& stop) const
{
    const std::string url = access.url + std::string(plannerPath(access.style));
    const auto headers = plannerHeaders(access.style, access.key);
    Reply reply = http->post(url, headers, body, timeUntil(deadline), stop);
    const auto* const error = std::get_if<DecisionError>(&reply);
    if (error == nullptr || error->kind != DecisionError::Kind::tooMany || !error->retryAfter
        || *error->retryAfter > longestPause || *error->retryAfter >= timeUntil(deadline))
        return reply;
    waitFor(*error->retryAfter, stop); // Where it is called off meanwhile, nothing is sent.
    return http->post(url, headers, body, timeUntil(deadline), stop);
}

DecisionError PlannerClient::told(DecisionError error) const
{
    if (error.kind == DecisionError::Kind::refused)
        error.message += " Look at " + access.keyName + ".";
    if (error.kind == DecisionError::Kind::rejected)
        error.message += " Look at \"planner_model\" and \"planner_host\" in the settings.";
    return error;
}

} // namespace quorvell
