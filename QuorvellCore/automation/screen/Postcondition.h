// SPDX-License-Identifier: MIT
// What must hold after a step, so that the step counts as having worked.
#pragma once

#include "QuorvellCore/automation/screen/AutomationObservation.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct Postcondition {
    static constexpr std::size_t longestValue = 32 * 1024; ///< Bytes: the longest text that can be typed at once.

    enum class Kind {
        app, ///< The application of this name is in front.
        site, ///< A page of this site is shown, at this path where the value has one.
        labelAppeared, ///< An element of this name came up.
        valueContains, ///< An element holds this text that did not hold the same before.
        focused, ///< The element of this name has the focus.
        changed, ///< Anything is different.
        userCheck, ///< Only the user can tell.
    };

    Kind kind = Kind::userCheck;
    std::string value{}; ///< What is expected; may be empty.

    /// Texts are compared as TextMatch::normalized, addresses as SiteMatch. An empty expectation never holds.
    bool verified(const AutomationObservation& before, const AutomationObservation& after) const;

    /// Whether one observation alone shows it: of an application, a site or the focus. False for the other kinds.
    bool satisfied(const AutomationObservation& after) const;

    bool operator==(const Postcondition&) const = default;
};

inline constexpr std::array<Postcondition::Kind, 7> allPostconditionKinds = {Postcondition::Kind::app,
    Postcondition::Kind::site, Postcondition::Kind::labelAppeared, Postcondition::Kind::valueContains,
    Postcondition::Kind::focused, Postcondition::Kind::changed, Postcondition::Kind::userCheck};

/// The name of the enumerator.
std::string_view storedText(Postcondition::Kind kind);
std::optional<Postcondition::Kind> postconditionKind(std::string_view stored);

} // namespace quorvell
