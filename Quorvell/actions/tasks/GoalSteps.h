// SPDX-License-Identifier: MIT
// The steps of a goal so far: as its next decider, its report and whoever learns the way have to know them.
#pragma once

#include "QuorvellCore/automation/decisions/AutomationDecision.h"
#include "QuorvellCore/automation/decisions/AutomationHistory.h"
#include "QuorvellCore/automation/engine/macros/MacroStep.h"

#include <optional>
#include <string_view>
#include <vector>

namespace quorvell {

/// A value.
class GoalSteps {
public:
    static constexpr int most = 40; ///< Tried, the impossible ones too.
    static constexpr int mostFailures = 3; ///< In a row, then it is no use.

    /// One more is tried; false where it cannot be done on this screen.
    bool begin(const AutomationDecision& decision, const AutomationObservation& observation, std::string_view goal);
    /// What was begun has ended.
    void note(bool isVerified);

    bool areTooMany() const { return m_begun >= most; }
    bool keepFailing() const { return m_failures >= mostFailures; }
    bool wasLastSeenToWork() const { return !m_history.empty() && m_history.back().verified; }
    const std::vector<AutomationHistory>& history() const { return m_history; }
    /// As it could be gone again: empty where a step was not verified or may not be kept.
    std::vector<MacroStep> way() const;

private:
    std::vector<AutomationHistory> m_history;
    std::vector<MacroStep> m_way;
    AutomationHistory m_step; ///< The one that runs or waits, and how it would be kept.
    std::optional<MacroStep> m_learnt;
    int m_begun = 0;
    int m_failures = 0; ///< In a row.
};

} // namespace quorvell
