// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/engine/TieredDecisionEngine.h"

#include "QuorvellCore/automation/engine/context/GoalWords.h"
#include "QuorvellCore/automation/engine/rules/DeterministicTasks.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

using SteadyTime = std::chrono::steady_clock::time_point;

double millisecondsBetween(SteadyTime start, SteadyTime end)
{
    return std::chrono::duration<double, std::milli>(end - start).count();
}

SteadyTime timeOf(const TieredDecisionEngine::Parts& parts)
{
    return parts.now ? parts.now() : SteadyTime{};
}

/// On a thread of the comparison. What it reports to may be gone by then.
void reportComparison(const std::weak_ptr<const TieredDecisionEngine::Parts>& asked, const DecisionContext& context,
    const std::optional<AutomationAction>& planned, const std::stop_token& stop)
{
    const auto parts = asked.lock();
    if (!parts || !parts->pim || stop.stop_requested())
        return;
    const SteadyTime start = timeOf(*parts);
    const auto selected = parts->pim->select(context, stop);
    const double milliseconds = millisecondsBetween(start, timeOf(*parts));
    // A comparison that was broken off tells nothing.
    if (stop.stop_requested() || !parts->onShadow)
        return;
    parts->onShadow(selected ? std::optional(selected->action == planned) : std::nullopt, milliseconds);
}

} // namespace

TieredDecisionEngine::TieredDecisionEngine(Parts parts)
    : m_parts(std::make_shared<const Parts>(std::move(parts)))
    , m_macros(m_parts->macros)
    , m_shadowWork(m_parts->freshID)
{
}

TieredDecisionEngine::~TieredDecisionEngine() = default;

std::variant<RoutedDecision, DecisionError> TieredDecisionEngine::decide(
    const DecisionContext& context, std::stop_token stop)
{
    const SteadyTime start = timeOf(*m_parts);
    const auto routed = [&](AutomationDecision decision, std::string_view tier) {
        return RoutedDecision{std::move(decision), tier, millisecondsBetween(start, timeOf(*m_parts)), std::nullopt};
    };
    const auto cancelled = [&] {
        m_shadowWork.cancel();
        return DecisionError{DecisionError::Kind::cancelled, 0, "The task was cancelled."};
    };
    if (stop.stop_requested())
        return cancelled();
    if (auto decision = byMacro(context))
        return routed(std::move(*decision), DecisionTier::macro);
    if (stop.stop_requested())
        return cancelled();
    if (auto decision = DeterministicTasks::decide(context, m_parts->applications))
        return routed(std::move(*decision), DecisionTier::local);
    if (stop.stop_requested())
        return cancelled();
    if (auto decision = bySelector(context, stop))
        return routed(std::move(*decision), DecisionTier::pim);
    if (stop.stop_requested())
        return cancelled();
    PlannerAnswer answer = byPlanner(context, stop);
    if (stop.stop_requested())
        return cancelled();
    if (auto* error = std::get_if<DecisionError>(&answer))
        return std::move(*error);
    auto& decision = std::get<AutomationDecision>(answer);
    RoutedDecision planned = routed(std::move(decision), DecisionTier::planner);
    if (m_parts->pim && m_parts->pimMode == PimMode::shadow)
        compare(context, planned.decision);
    return planned;
}

void TieredDecisionEngine::cancel()
{
    m_shadowWork.cancel();
}

/// Each is asked, so that each that no longer fits is found out; the first one that knows the step decides.
std::optional<AutomationDecision> TieredDecisionEngine::byMacro(const DecisionContext& context)
{
    if (m_parts->macros.empty() || !m_parts->clock)
        return std::nullopt;
    const std::string goal = GoalWords::of(context.goal);
    const Instant now = m_parts->clock();
    std::optional<AutomationDecision> first;
    std::vector<VerifiedMacro> broken;
    {
        const std::lock_guard guard(m_lock);
        for (const VerifiedMacro& macro : m_macros) {
            if (macro.goal != goal)
                continue;
            if (macro.fit(context, now) == VerifiedMacro::Fit::broken)
                broken.push_back(macro);
            else if (!first)
                first = macro.decide(context, now);
        }
        std::erase_if(m_macros,
            [&](const VerifiedMacro& macro) { return std::find(broken.begin(), broken.end(), macro) != broken.end(); });
    }
    for (const VerifiedMacro& macro : broken) {
        if (m_parts->macroBroke)
            m_parts->macroBroke(macro);
    }
    return first;
}

/// Only where the step before worked, and where nobody asked to look closer.
std::optional<AutomationDecision> TieredDecisionEngine::bySelector(
    const DecisionContext& context, const std::stop_token& stop) const
{
    const bool isAsked = m_parts->pim && m_parts->pimMode == PimMode::active && !context.image
        && (context.history.empty() || context.history.back().verified);
    return isAsked ? m_parts->pim->select(context, stop) : std::nullopt;
}

PlannerAnswer TieredDecisionEngine::byPlanner(const DecisionContext& context, const std::stop_token& stop) const
{
    if (!m_parts->planner)
        return DecisionError{DecisionError::Kind::unreachable, 0,
            "No service that plans steps is set up, so only plain steps can be done: name what to press just as it is "
            "written."};
    PlannerAnswer answer = m_parts->planner(context, stop);
    const auto* decision = std::get_if<AutomationDecision>(&answer);
    if (decision && decision->kind == AutomationDecision::Kind::action && !decision->action)
        return DecisionError{DecisionError::Kind::malformed, 0, "The planner's answer holds no step."};
    return answer;
}

void TieredDecisionEngine::compare(const DecisionContext& context, const AutomationDecision& planned)
{
    // Refused where too many are still under way: a comparison more or less tells nothing.
    (void)m_shadowWork.submit([parts = std::weak_ptr(m_parts), context, action = planned.action](
                                  const std::stop_token& stop) { reportComparison(parts, context, action, stop); });
}

} // namespace quorvell
