// SPDX-License-Identifier: MIT
// What the model asks of set_reminder, read and judged.
#pragma once

#include "QuorvellCore/live/wire/vocabulary/LiveFunctionCall.h"
#include "QuorvellCore/reminders/calendar/Calendar.h"
#include "QuorvellCore/reminders/request/ReminderRequest.h"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

struct ReminderArguments {
    enum class Kind { reminder, alarm, timer, all };

    static constexpr std::size_t longestTask = 500; ///< User-perceived characters.

    std::string text; ///< The user's own words.
    std::string task;
    std::string date; ///< As it was written; `moment` is what it means.
    std::optional<Instant> moment;
    bool isWholeDay = false; ///< Of `moment`, which then is the hour at which days without one begin.
    std::optional<ReminderRepeat> repeat;
    bool endsRepeat = false;
    bool isForReturn = false;
    bool lists = false;
    bool isDone = false;
    bool isCancelled = false;
    std::optional<bool> ofSeries; ///< Of a cancelled one that repeats: all of it, or the next time only.
    std::optional<Instant> until; ///< Of cancelled alarms: in that day's midnight; behind it those that repeat go on.
    std::string later; ///< Until when, in words.
    std::string id;
    Kind kind = Kind::reminder;
    bool isAlarm = false; ///< Of one that is to be set.
    std::optional<std::chrono::seconds> timer; ///< Of one that is to be set.
    bool pauses = false;
    bool resumes = false;
    bool stops = false;
    std::optional<std::chrono::seconds> added; ///< To a timer; below 0 it becomes shorter.
    std::optional<std::chrono::minutes> snooze;
    std::vector<std::string> ids; ///< Of several that are cancelled at once.
    std::string undo; ///< A token of the UndoBook.
    std::string problem; ///< When it cannot be carried out as it is asked for: a sentence for the model.

    static ReminderArguments read(const LiveFunctionCall& call, const Calendar& calendar);

    /// Whether it is about what rings, and about nothing else.
    bool isOfAlarms() const;
    std::string words() const { return task.empty() ? text : task; }
    std::string timeWords() const { return text.empty() ? task : text; } ///< Where a time is read from.
    bool changesNothing() const;

    /// What is to be set, or what has to be asked before.
    ReminderRequest request(Instant now, const Calendar& calendar) const;
};

} // namespace quorvell
