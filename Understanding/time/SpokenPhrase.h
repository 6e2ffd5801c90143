// SPDX-License-Identifier: MIT
// What words say of a time, however its numbers are put: typed in digits, or heard as words.
#pragma once

#include "QuorvellCore/reminders/phrase/ReminderPhrase.h"
#include "Understanding/time/LocalTime.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct SpokenPhrase {
    /// Nothing where no time is named, nor in a whole story.
    static std::optional<ReminderPhrase> read(std::string_view words, const LocalTime& around);
    /// Numbers and times of day that are said in words, in digits, as the reader of phrases knows them.
    static std::string withDigits(std::string_view words);
};

} // namespace quorvell
