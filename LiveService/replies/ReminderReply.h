// SPDX-License-Identifier: MIT
// The wording of set_reminder's results.
#pragma once

#include "LiveService/rules/RequestMemory.h"
#include "QuorvellCore/text/Json.h"

#include <string>
#include <string_view>

namespace quorvell {

struct ReminderReply {
    /// `userWords` are those of the request; they tell "to call Anna" from "about Anna".
    static std::string reply(const Json& result, std::string_view userWords);
    /// The reminders of the days that were asked about.
    static std::string list(const Json& result, const RequestMemory& memory);
};

} // namespace quorvell
