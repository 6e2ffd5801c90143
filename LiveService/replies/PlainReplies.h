// SPDX-License-Identifier: MIT
// What is said without any tool. Short, in common words: it is heard, not read.
#pragma once

#include "QuorvellCore/reminders/Calendar.h"
#include "QuorvellCore/text/Instant.h"

#include <set>
#include <string>
#include <string_view>

namespace quorvell {

struct PlainReplies {
    using Tools = std::set<std::string, std::less<>>;

    static constexpr std::string_view notUnderstood = "Sorry, I could not understand that.";
    static constexpr std::string_view whichOne = "Which one do you mean?";
    static constexpr std::string_view notThatMany = "There are not that many. Which one do you mean?";
    static constexpr std::string_view dropped = "Okay, I will not do that.";
    static constexpr std::string_view cannotDelete =
        "I cannot throw notes away. You can: type quorvell notes delete, or delete its file in your notebook's folder.";

    /// Without a name it greets nobody in particular.
    static std::string greeting(std::string_view name);
    /// What can be done with the tools that the session offered, as a sentence.
    static std::string abilities(const Tools& tools);
    static std::string help(const Tools& tools);
    /// For what only a hosted model could do.
    static std::string cannot(const Tools& tools);
    /// For a request whose tool the session did not offer.
    static std::string notOffered(std::string_view what);
    /// "Saturday the 21st of November".
    static std::string day(Instant now, const Calendar& calendar);
};

} // namespace quorvell
