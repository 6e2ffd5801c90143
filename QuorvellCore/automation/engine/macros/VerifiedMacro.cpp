// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/engine/macros/VerifiedMacro.h"

#include "QuorvellCore/automation/engine/context/GoalWords.h"

namespace quorvell {

namespace {

/// The task has gone this way and no other; an unverified step may only be the last one.
bool hasGone(const std::vector<MacroStep>& steps, const std::vector<AutomationHistory>& history)
{
    if (history.size() > steps.size())
        return false;
    for (std::size_t index = 0; index < history.size(); ++index) {
        const bool isLast = index + 1 == history.size();
        if (history[index] != steps[index].taken(history[index].verified) || (!history[index].verified && !isLast))
            return false;
    }
    return true;
}

/// Whether what the last step was to bring about is there; that something is different does not tell a goal.
bool showsTheEnd(const Postcondition& expected, const AutomationObservation& screen)
{
    return expected.kind != Postcondition::Kind::changed && expected.verified(AutomationObservation{}, screen);
}

} // namespace

VerifiedMacro::Fit VerifiedMacro::fit(const DecisionContext& context, Instant now) const
{
    if (verified < timesToTrust || steps.empty() || now - lastVerified > trusted || GoalWords::of(context.goal) != goal
        || !hasGone(steps, context.history))
        return Fit::other;
    const std::size_t done = context.history.size();
    if (done > 0 && !context.history.back().verified)
        return Fit::broken;
    if (done == steps.size() || steps[done].decide(context))
        return Fit::ready;
    return done == 0 ? Fit::other : Fit::broken;
}

std::optional<AutomationDecision> VerifiedMacro::decide(const DecisionContext& context, Instant now) const
{
    if (fit(context, now) != Fit::ready)
        return std::nullopt;
    if (const std::size_t done = context.history.size(); done < steps.size())
        return steps[done].decide(context);
    if (!showsTheEnd(steps.back().expected, context.observation))
        return std::nullopt;
    return AutomationDecision{AutomationDecision::Kind::finished, "That's done.", std::nullopt, std::nullopt};
}

bool VerifiedMacro::hasKeyOf(const VerifiedMacro& other) const
{
    return goal == other.goal && !steps.empty() && !other.steps.empty() && steps.front().app == other.steps.front().app
        && steps.front().site == other.steps.front().site;
}

} // namespace quorvell
