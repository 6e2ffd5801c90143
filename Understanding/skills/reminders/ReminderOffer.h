// SPDX-License-Identifier: MIT
// "I would like to write her a card on the 5th": nothing was asked for, and a reminder is likely of use.
#pragma once

#include "Understanding/dialogue/Request.h"

#include <optional>
#include <string>

namespace quorvell {

struct ReminderOffer {
    /// `words` with their first ones, which tell a plan from a wish. Only deeds that are nobody else's matter here.
    static std::optional<Request> read(const std::string& words, const RuleSurroundings& around);
};

} // namespace quorvell
