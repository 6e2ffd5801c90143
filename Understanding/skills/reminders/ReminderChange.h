// SPDX-License-Identifier: MIT
// What an utterance does with reminders that are there already.
#pragma once

#include "Understanding/dialogue/RuleSurroundings.h"
#include "Understanding/time/SpokenDays.h"
#include "Understanding/words/RequestReading.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct ReminderChange {
    enum class Kind { list, done, cancel, cancelAll, later };

    Kind kind = Kind::list;
    std::string task{}; ///< Words of the one that is meant; empty for what is due, or was just talked about.
    std::string when{}; ///< Of later: until when, in the user's words.
    std::optional<SpokenDays> days{}; ///< Of list: only those of these days.

    bool mayBeNew = false; ///< Of later: a bare time, which where nothing is due asks for a new reminder.

    bool operator==(const ReminderChange&) const = default;

    /// What the owner of reminders knows one by: "dentist" of "calling the dentist" and of "the dentist is".
    static std::string taskNamed(const std::string& content);
    static std::optional<ReminderChange> listing(const RequestReading& reading, const RuleSurroundings& around);
    static std::optional<ReminderChange> finishing(const RequestReading& reading);
    /// Of cancel, where a time stands in place of the task: all of that time.
    static ReminderChange ofTime(ReminderChange change, const RuleSurroundings& around);
    /// "I have already called the dentist".
    static std::optional<ReminderChange> told(std::string_view core);
    /// Nothing without a time where a plain "later" is not meant either.
    static std::optional<ReminderChange> puttingOff(const RequestReading& reading, const RuleSurroundings& around);
};

} // namespace quorvell
