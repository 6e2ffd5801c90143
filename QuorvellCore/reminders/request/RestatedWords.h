// SPDX-License-Identifier: MIT
// Requests whose time is read in other words than it was said in.
#pragma once

#include "QuorvellCore/reminders/calendar/Calendar.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct RestatedWords {
    std::string words;
    std::string
        elseWords{}; ///< Of a date in figures that nobody can tell: with the month and the day the other way round.
    Instant seenFrom{}; ///< When they have to be read, for their times to be the next ones.
    bool comesBack = false; ///< They hold only where something repeats.
    std::string endOfTask{}; ///< Goes back behind the task: an hour that is a part of it.

    /// "On 4/12" where both orders make a day, "every tuesday starting from december", "not to eat after 8 pm". Nothing
    /// for all others.
    static std::optional<RestatedWords> find(std::string_view words, Instant now, const Calendar& calendar);
};

} // namespace quorvell
