// SPDX-License-Identifier: MIT
// What is said without any tool. Short, in common words: it is heard, not read.
#pragma once

#include "QuorvellCore/reminders/calendar/Calendar.h"
#include "QuorvellCore/text/Instant.h"

#include <string>
#include <string_view>

namespace quorvell {

struct PlainReplies {
    static constexpr std::string_view notUnderstood = "Sorry, I could not understand that.";
    static constexpr std::string_view whichOne = "Which one do you mean?";
    static constexpr std::string_view notThatMany = "There are not that many. Which one do you mean?";
    static constexpr std::string_view dropped = "Okay, I will not do that.";

    /// Without a name it greets nobody in particular.
    static std::string greeting(std::string_view name);
    /// For a request whose tool the session did not offer.
    static std::string notOffered(std::string_view what);
    /// "Saturday the 21st of November".
    static std::string day(Instant now, const Calendar& calendar);
};

} // namespace quorvell
