// SPDX-License-Identifier: MIT
// The calls of set_reminder. Pure.
#pragma once

#include "QuorvellCore/reminders/calendar/DateParts.h"
#include "Understanding/dialogue/ToolCalls.h"

#include <string_view>

namespace quorvell {

struct ReminderCalls {
    static constexpr std::string_view skill = "reminders";
    static constexpr const char* tool = "set_reminder";

    const RuleSurroundings& around;

    /// From the user's own words. `repeat` may be empty, or what an earlier result found in words that are gone.
    ToolCalls::Answer set(std::string_view text, std::string_view repeat = {}) const;
    /// The same of a task that is settled, with the user's words for its time.
    ToolCalls::Answer setTask(std::string_view task, std::string_view time) const;
    /// From what an earlier result settled. `repeat` may be empty.
    ToolCalls::Answer setAt(std::string_view task, const DateParts& date, std::string_view repeat) const;
    /// When the user is next back at the computer.
    ToolCalls::Answer setOnReturn(std::string_view task) const;
    ToolCalls::Answer list() const;
    /// `task` are words of it; empty for what is due.
    ToolCalls::Answer finish(std::string_view task) const;
    /// They do not want it any more; one that repeats is asked about.
    ToolCalls::Answer cancel(std::string_view task) const;
    ToolCalls::Answer putOff(std::string_view task, std::string_view when) const;
    // Of the one with that id:
    ToolCalls::Answer finishThis(std::string_view id) const;
    ToolCalls::Answer cancelThis(std::string_view id) const;
    /// Asks nothing: where it repeats, this time goes, or all of them.
    ToolCalls::Answer cancelThis(std::string_view id, bool isOfSeries) const;
    /// `rule` in the form of the tools.
    ToolCalls::Answer repeatThis(
        std::string_view id, const std::optional<DateParts>& first, std::string_view rule) const;
    ToolCalls::Answer putOffThis(std::string_view id, std::string_view when) const;
};

} // namespace quorvell
