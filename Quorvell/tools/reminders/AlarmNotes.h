// SPDX-License-Identifier: MIT
// The notes of alarms and timers, as set_reminder sees and names them. Pure.
#pragma once

#include "Quorvell/tools/reminders/ReminderArguments.h"
#include "QuorvellCore/notebook/Note.h"

#include <string>
#include <vector>

namespace quorvell {

struct AlarmNotes {
    /// Alarms or timers that are set, by their times, paused timers last; what was missed more than a day ago is not
    /// among them. Those that the model may know of.
    static std::vector<Note> set(const std::vector<Note>& notes, ReminderArguments::Kind kind, Instant now);

    static bool isPausedTimer(const Note& note);
    static bool isOfKind(const Note& note, ReminderArguments::Kind kind);
    static bool repeats(const Note& note);
    /// The user's own words without those that only say that an alarm is wanted.
    static std::string withoutAlarmWords(const std::string& text);
    /// Whether what is left of words is rather part of a time that was not understood than a name: "and 8", "p.m".
    static bool isHalfReadTime(const std::string& rest);
    /// Whether the words say more of the hour than "in the morning" or "tonight".
    static bool namesHour(const std::string& words);
    /// "in the morning"; empty where the words name none.
    static std::string partOfDay(const std::string& words);
    /// "Pasta timer" of "pasta".
    static std::string timerTitle(const std::string& task);
};

} // namespace quorvell
