// SPDX-License-Identifier: MIT
// What people ask an assistant for that is not done on this computer alone: said plainly, never guessed at.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct OutOfReach {
    std::string_view reply{}; ///< What cannot be done, a literal; empty for what only a hosted model could.
    bool isDeed = false; ///< Something would be done; else something would be known.
    bool isOffScreen = false; ///< Nor can it be done in an application in front.
    bool isCommonKnowledge = false; ///< Any model knows it, also one without the web.

    /// Nothing for words that may ask for something that can be done here: whatever names a list, a note, a reminder,
    /// an alarm, the calendar and the like. `core` is an utterance without its opening and closing words.
    static std::optional<OutOfReach> of(std::string_view core);

    bool operator==(const OutOfReach&) const = default;
};

} // namespace quorvell
