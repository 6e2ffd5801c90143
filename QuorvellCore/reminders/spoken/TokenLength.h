// SPDX-License-Identifier: MIT
// A length of time in a request: "2 hours and 30 minutes", "an hour and a half", "1h30", "two weeks".
#pragma once

#include "QuorvellCore/reminders/wording/RequestTokens.h"

#include <optional>

namespace quorvell {

struct TokenLength {
    static constexpr int minutesOfDay = 24 * 60;

    int minutes = 0;
    int end = 0; ///< The token behind it.
    bool isOfDays = false; ///< Whole days only, which keep the time of day. Days do not mix with hours.

    static std::optional<TokenLength> at(const RequestTokens& tokens, int index);
};

} // namespace quorvell
