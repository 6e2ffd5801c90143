// SPDX-License-Identifier: MIT
// The days on which an alarm is to ring again, as people put them, in the words that the reader of rules knows. Pure.
#pragma once

#include <string>

namespace quorvell {

struct AlarmRule {
    /// "Monday through thursday at 6", "mon wed fri", "every day except sundays", where "the weekend" may be this one;
    /// words without a rule stay as they are.
    static std::string inTime(const std::string& words);
};

} // namespace quorvell
