#pragma once

#include "QuorvellCore/text/Json.h"

#include <string>
#include <string_view>

namespace quorvell {

/// The wording of set_reminder's results.
struct ReminderReply {
    /// `userWords` are those of the request; they tell "to call Anna" from "about Anna".
    static std::string reply(const Json& result, std::string_view userWords);
    /// The reminders of the days from `firstDay` to `lastDay`; of all where they are empty. `days` says it in words.
    static std::string list(
        const Json& result, std::string_view days, std::string_view firstDay, std::string_view lastDay);
};

} // namespace quorvell
