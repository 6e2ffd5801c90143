// SPDX-License-Identifier: MIT
// A reminder for when something happens: "remind me to call Bob when I get home". The computer notices only that its
// user is back; of anything else it asks for the hour.
#pragma once

#include "Understanding/dialogue/Request.h"
#include "Understanding/dialogue/RuleSurroundings.h"

#include <optional>
#include <string>

namespace quorvell {

struct ReminderOccasion {
    std::string task; ///< "call Bob"
    bool isReturn = false; ///< Of the user to the computer.

    /// Nothing where the words name a time as well.
    static std::optional<ReminderOccasion> read(const std::string& core, const RuleSurroundings& around);
    static Request request(ReminderOccasion occasion);
};

} // namespace quorvell
