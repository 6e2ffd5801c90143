// SPDX-License-Identifier: MIT
// What a decider answers for one step.
#pragma once

#include "QuorvellCore/automation/actions/AutomationAction.h"
#include "QuorvellCore/automation/screen/Postcondition.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct AutomationDecision {
    static constexpr std::size_t longestMessage = 2'000; ///< User-perceived characters.

    enum class Kind {
        action, ///< Do it.
        finished, ///< The task is done; the message reports it.
        clarify, ///< The message is a question to the user; nothing is done before the answer.
        vision, ///< The elements do not tell enough: decide again with an image of the screen.
    };

    Kind kind = Kind::clarify;
    std::string message{}; ///< For the user.
    std::optional<AutomationAction> action{}; ///< Never missing where the kind is action.
    std::optional<Postcondition> expected{}; ///< How to tell that the action worked.

    bool operator==(const AutomationDecision&) const = default;
};

inline constexpr std::array<AutomationDecision::Kind, 4> allDecisionKinds = {AutomationDecision::Kind::action,
    AutomationDecision::Kind::finished, AutomationDecision::Kind::clarify, AutomationDecision::Kind::vision};

/// The name of the enumerator.
std::string_view storedText(AutomationDecision::Kind kind);
std::optional<AutomationDecision::Kind> decisionKind(std::string_view stored);

} // namespace quorvell
