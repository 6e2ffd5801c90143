// SPDX-License-Identifier: MIT
// The event log as conversations and as lines that a person can follow. Pure; the log is outside text like any other.
#pragma once

#include "Quorvell/records/LogEntry.h"
#include "QuorvellCore/reminders/calendar/Calendar.h"

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// What one run of the program did without a long pause.
struct LogConversation {
    std::string id; ///< Of the run; a later part of the same run has "-2", "-3" behind it.
    std::vector<LogEntry> entries; ///< Never empty; in the order of the log.

    bool operator==(const LogConversation&) const = default;
};

struct LogTimeline {
    /// After such a pause the same run counts as another conversation.
    static constexpr std::chrono::minutes newConversationAfter{30};
    /// A pause between two lines that is worth a line of its own.
    static constexpr std::chrono::seconds gapShown{5};

    std::vector<LogConversation> conversations; ///< By their beginning, oldest first.
    std::size_t unreadable = 0; ///< Lines that were none.

    /// `text` is one file after another, oldest first.
    static LogTimeline of(std::string_view text);

    /// The one with this id, or whose id begins so when it is the only one; null otherwise.
    const LogConversation* find(std::string_view id) const;

    /// Clock time, what happened, its details; pauses between.
    static std::vector<std::string> lines(const LogConversation& conversation, const Calendar& calendar);
    /// One line for a list: id, day, how long, how much went wrong.
    static std::string heading(const LogConversation& conversation, const Calendar& calendar);
    static std::size_t problemsIn(const LogConversation& conversation);
};

} // namespace quorvell
