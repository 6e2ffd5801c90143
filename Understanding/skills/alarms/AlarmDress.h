// SPDX-License-Identifier: MIT
// What stands in the words of an alarm besides its time and its name: how it should sound, that it is to ring. Pure.
#pragma once

#include <string>

namespace quorvell {

/// The words without it, and what it said.
struct AlarmDress {
    std::string words{};
    bool wantsSound = false; ///< A tone or a loudness that no alarm has.
    bool wantsRule = false; ///< It is to come back, and nothing says when.

    static AlarmDress takenOff(const std::string& words);
    /// "For tomorrow set an alarm at 6", with the day at the end.
    static std::string withDayLast(const std::string& core);
    /// "I'm on leave next week so cancel the alarms", "no alarm tomorrow, I'm sick": the wish alone, with the days of
    /// its reason where it names none itself.
    static std::string withoutReason(const std::string& core);

    bool operator==(const AlarmDress&) const = default;
};

} // namespace quorvell
