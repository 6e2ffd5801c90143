// SPDX-License-Identifier: MIT
// Which of several times the user means, when there is somebody to be asked.
#pragma once

#include "QuorvellCore/reminders/calendar/Calendar.h"

#include <functional>
#include <iosfwd>
#include <optional>
#include <vector>

namespace quorvell {

using WhichTime = std::function<std::optional<Instant>(const std::vector<Instant>& choices)>;

/// Asks by numbers, at most three times. Nothing when the answer is empty, or none of them.
std::optional<Instant> askWhichTime(const std::vector<Instant>& choices, Instant now, const Calendar& calendar,
    std::istream& answers, std::ostream& questions);

} // namespace quorvell
