// SPDX-License-Identifier: MIT
// One step of a way that worked: what to do, where it may be done, and how to tell that it worked.
#pragma once

#include "QuorvellCore/automation/decisions/AutomationDecision.h"
#include "QuorvellCore/automation/decisions/AutomationHistory.h"
#include "QuorvellCore/automation/decisions/DecisionContext.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct MacroStep {
    static constexpr std::size_t longestText = 500; ///< Bytes of each text in it; longer ones are not learnt.

    std::string app{}; ///< In front, as TextMatch::normalized has it.
    std::string site{}; ///< The host of the page that is shown; empty where there is none.
    std::string role{}; ///< Of the element, found by it and its label; empty for steps without an element.
    std::string label{};
    AutomationAction action{}; ///< Without a target: ids change from scan to scan.
    Postcondition expected{};

    /// From a step that was taken on this screen for this goal. Nothing where it cannot be told again what it was done
    /// to, where nothing tells that it worked, and where it holds what is nobody's business: typed text that the goal
    /// does not name, numbers of cards, boxes for private numbers, addresses with more than a place in them.
    static std::optional<MacroStep> learnt(const AutomationAction& action, const Postcondition& expected,
        const AutomationObservation& before, std::string_view goal);

    /// Whether such a step may be kept and replayed for the goal at all: the rules of `learnt`, for one from a file.
    bool isKeepable(std::string_view goal) const;

    /// The step on this screen. Nothing where it is another application or site, where the element is not there or not
    /// alone, where it cannot be acted on, and where the guard forbids it.
    std::optional<AutomationDecision> decide(const DecisionContext& context) const;

    /// As it stands in the history once it is done.
    AutomationHistory taken(bool verified) const;

    bool operator==(const MacroStep&) const = default;
};

} // namespace quorvell
