// SPDX-License-Identifier: MIT
// What is to be done with a thing that is there already.
#pragma once

#include "QuorvellCore/reminders/calendar/DateParts.h"

#include <optional>
#include <string>

namespace quorvell {

struct Wish {
    enum class Kind {
        none,
        move, ///< To another time.
        cancel, ///< Or mark as done.
        tellNext, ///< The first one, or the first behind `after`.
    };
    /// How much of what repeats is meant.
    enum class Scope { open, one, all };

    Kind kind = Kind::none;
    std::string title{}; ///< Words of it; empty for what was talked about.
    std::string when{}; ///< The new time in the user's words; empty when it is moved by `minutes`.
    int minutes = 0; ///< Below 0 to an earlier time.
    Scope scope = Scope::open;
    std::optional<DateParts> after{};
    std::string
        from{}; ///< Where they take it to stand: "friday" of "not friday, saturday". Empty when they do not say.

    std::string repeat{}; ///< Of move: "every friday", the rule that it gets, in the user's words.
    bool isDone = false; ///< Of cancel: they have done it, and what repeats goes on.

    bool operator==(const Wish&) const = default;
};

} // namespace quorvell
