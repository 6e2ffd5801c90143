// SPDX-License-Identifier: MIT
// What something in a practice world brings about, and on what conditions.
#pragma once

#include "Quorvell/practice/description/PracticeConsequence.h"

#include <chrono>
#include <string>
#include <vector>

namespace quorvell {

struct PracticeCondition {
    enum class Kind {
        factIs, ///< Compared as TextMatch::normalized, as are the two below.
        factIsNot,
        factContains,
        app, ///< In front.
        window, ///< On top of the application in front.
        page, ///< Shown by the browser in front: the same site, and the same path where one is given.
        pageItself, ///< This page and no other; no file says so.
        happened, ///< A consequence about this; about anything where the value is empty.
        notHappened,
    };

    Kind kind = Kind::factIs;
    std::string name{}; ///< Of the fact, the application, the window; the address; the consequence.
    std::string value{};

    bool operator==(const PracticeCondition&) const = default;
};

/// All of them hold.
using PracticeConditions = std::vector<PracticeCondition>;

/// In texts "{name}" stands for what the fact of that name says at that moment.
struct PracticeEffect {
    enum class Kind {
        set, ///< The fact becomes the text.
        window, ///< Comes up, its application in front.
        close, ///< The window is gone.
        app, ///< Comes to the front, opened where it is not.
        page, ///< The text as an address in the browser's front tab.
        happens, ///< A consequence about the text.
        notify, ///< The desktop shows the text for a moment.
        focus, ///< On the element.
    };

    Kind kind = Kind::set;
    std::string name{}; ///< Of the fact, window, application or element; the consequence.
    std::string text{};
    PracticeConditions conditions{}; ///< At the moment when it would come about.
    std::chrono::milliseconds delay{}; ///< After what brings it about.

    bool operator==(const PracticeEffect&) const = default;
};

/// One after the other.
using PracticeEffects = std::vector<PracticeEffect>;

} // namespace quorvell
