// SPDX-License-Identifier: MIT
// What the user wants to be reminded of and when, ready to be stored or asked about.
#pragma once

#include "QuorvellCore/reminders/phrase/ReminderPhrase.h"
#include "QuorvellCore/reminders/request/UnderstoodTime.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// Where a phrase says what the words mean, a request says what to do about it: times that are said in words are
/// understood, what the time words left dangling in the task is tidied away, and instants that are already past are no
/// choice.
struct ReminderRequest {
    enum class Verdict {
        ready,
        whichTime, ///< The words mean one of `choices`.
        needsTime, ///< No time was understood, or not all of it.
        pastTime, ///< The only time that was meant is over.
        needsTask,
    };

    Verdict verdict = Verdict::needsTime;
    std::string task;
    Instant date{};
    bool hasTime = false;
    std::vector<Instant> choices; ///< In order; of whichTime.
    std::optional<ReminderRepeat> repeatRule;
    std::string unclear{}; ///< Of needsTime: the user's words that were not understood, or that do not agree.
    UnderstoodTime understood{}; ///< Of needsTime: the rest of the time, which nobody has to say again.
    bool isEitherDay = false; ///< Of whichTime: a date in figures has two readings, and each of them a choice.
    bool namesDay = false; ///< In the words; else a time of day is the next that the clock shows.

    static ReminderRequest fromWords(std::string_view words, Instant now, const Calendar& calendar);

    /// When everything is settled but whether it fits together. A repeating one that is past moves on.
    static ReminderRequest settled(std::string_view task, Instant date, bool hasTime,
        std::optional<ReminderRepeat> repeatRule, Instant now, const Calendar& calendar);

    bool operator==(const ReminderRequest&) const = default;
};

} // namespace quorvell
