// SPDX-License-Identifier: MIT
// What was understood of "remind me tomorrow at 5 to call the dentist".
#pragma once

#include "QuorvellCore/reminders/calendar/Calendar.h"
#include "QuorvellCore/reminders/state/ReminderRepeat.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// English only, in any case.
struct ReminderPhrase {
    static constexpr std::size_t maximumBytes = 1024 * 1024; ///< Longer texts hold no reminder.

    std::string task; ///< May be empty when only a time was said.
    Instant date{};
    bool hasTime = false; ///< False when only a day was named, so that the hour is a default.
    std::vector<Instant> alternatives; ///< What the same words could also mean, in order, at most two.
    std::optional<ReminderRepeat> repeatRule;
    std::string timeWords; ///< The user's own words that were read as the time.

    bool isAmbiguous() const { return !alternatives.empty(); }

    /// Nothing when the text names no date and no time.
    static std::optional<ReminderPhrase> parse(std::string_view text, Instant now, const Calendar& calendar);

    bool operator==(const ReminderPhrase&) const = default;
};

} // namespace quorvell
