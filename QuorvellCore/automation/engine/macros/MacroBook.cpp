// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/engine/macros/MacroBook.h"

#include "QuorvellCore/automation/engine/context/GoalWords.h"
#include "QuorvellCore/automation/engine/macros/KeepableText.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace quorvell {

namespace {

bool isKeepableMacro(const VerifiedMacro& macro)
{
    return !macro.goal.empty() && macro.goal.size() <= VerifiedMacro::longestGoal
        && macro.goal == GoalWords::of(macro.goal) && KeepableText::isPublicGoal(macro.goal) && !macro.steps.empty()
        && macro.steps.size() <= VerifiedMacro::mostSteps && macro.verified >= 1
        && macro.verified <= MacroBook::mostVerified
        && std::all_of(
            macro.steps.begin(), macro.steps.end(), [&](const MacroStep& step) { return step.isKeepable(macro.goal); });
}

} // namespace

bool MacroBook::learn(std::string_view goal, std::vector<MacroStep> steps, Instant now)
{
    VerifiedMacro learnt{GoalWords::of(goal), std::move(steps), 1, now};
    if (!isKeepableMacro(learnt))
        return false;
    const auto known = std::find_if(
        m_entries.begin(), m_entries.end(), [&](const VerifiedMacro& entry) { return entry.hasKeyOf(learnt); });
    if (known != m_entries.end()) {
        if (known->steps == learnt.steps)
            learnt.verified = std::min(known->verified + 1, mostVerified);
        m_entries.erase(known);
    }
    put(std::move(learnt));
    return true;
}

void MacroBook::drop(const VerifiedMacro& macro)
{
    std::erase_if(m_entries, [&](const VerifiedMacro& entry) { return entry.hasKeyOf(macro); });
}

std::vector<VerifiedMacro> MacroBook::macros() const
{
    std::vector<VerifiedMacro> trusted;
    std::copy_if(m_entries.begin(), m_entries.end(), std::back_inserter(trusted),
        [](const VerifiedMacro& entry) { return entry.verified >= VerifiedMacro::timesToTrust; });
    return trusted;
}

bool MacroBook::add(VerifiedMacro macro)
{
    const bool isKnown = std::any_of(
        m_entries.begin(), m_entries.end(), [&](const VerifiedMacro& entry) { return entry.hasKeyOf(macro); });
    if (isKnown || !isKeepableMacro(macro))
        return false;
    put(std::move(macro));
    return true;
}

void MacroBook::put(VerifiedMacro macro)
{
    const auto place = std::find_if(m_entries.begin(), m_entries.end(),
        [&](const VerifiedMacro& entry) { return entry.lastVerified <= macro.lastVerified; });
    m_entries.insert(place, std::move(macro));
    if (m_entries.size() > mostMacros)
        m_entries.pop_back();
}

} // namespace quorvell
