// SPDX-License-Identifier: MIT
// Whether words name something that is kept here: a list, a note, a reminder, an alarm, the calendar.
#pragma once

#include <string>

namespace quorvell {

struct OurMatters {
    /// `phrase` as RequestText::phrase gives it. Whatever these are said of, it is nearly always a matter of a skill.
    static bool areNamed(const std::string& phrase);
    /// Words that often are.
    static bool mayBeNamed(const std::string& phrase);
};

} // namespace quorvell
