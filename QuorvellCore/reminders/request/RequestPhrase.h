// SPDX-License-Identifier: MIT
// The phrase that the words of a request come to: what the patterns find once everything is written as they know it.
#pragma once

#include "QuorvellCore/reminders/phrase/ReminderPhrase.h"

#include <optional>
#include <string_view>

namespace quorvell {

/// More than ReminderPhrase finds by itself ("the first monday of may", "20 march 2028"), and less than ReminderRequest
/// doubts: for readers that look for a time somewhere in the words. Nothing where days do not agree.
std::optional<ReminderPhrase> requestPhrase(std::string_view words, Instant now, const Calendar& calendar);

} // namespace quorvell
