// SPDX-License-Identifier: MIT
// What makes a reminder fire.
#pragma once

#include <optional>
#include <string_view>

namespace quorvell {

enum class ReminderTrigger {
    time, ///< Its `remindAt`; also the meaning of an absent trigger.
    backAtMac, ///< The user's return to the computer.
};

/// "time" or "back_at_mac".
std::string_view storedText(ReminderTrigger trigger);

/// Exactly one of the stored texts, else nothing.
std::optional<ReminderTrigger> reminderTrigger(std::string_view stored);

} // namespace quorvell
