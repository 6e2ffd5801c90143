// SPDX-License-Identifier: MIT
// Builds the requests that the rules make, each only where the session offered its tool. Pure.
#pragma once

#include "LiveService/rules/AgendaIntent.h"
#include "LiveService/rules/RuleStep.h"
#include "LiveService/rules/RuleSurroundings.h"
#include "LiveService/rules/SpokenDays.h"

#include <string>
#include <string_view>

namespace quorvell {

struct ToolRequests {
    using Answer = decltype(RuleStep::answer);

    const RuleSurroundings& surroundings;

    /// From the user's own words. `repeat` may be empty, or what an earlier result found in words that are gone.
    Answer remindFromWords(std::string_view text, std::string_view repeat = {}) const;
    /// From what an earlier result settled. `repeat` may be empty.
    Answer remindSettled(std::string_view task, std::string_view date, std::string_view repeat) const;
    Answer keep(std::string_view title, std::string_view text) const;
    /// At most `limit` notes; 0 leaves the number to the tool.
    Answer find(std::string_view query, int limit) const;
    Answer readNote(std::string_view id) const;

    Answer listReminders() const;
    /// `task` are words of it; empty for what is due.
    Answer finishReminder(std::string_view task) const;
    Answer putOffReminder(std::string_view task, std::string_view when) const;
    Answer remember(std::string_view fact) const;
    Answer openNotebook() const;
    Answer setMode(std::string_view mode) const;

    Answer whatsOn(const SpokenDays& days) const;
    /// Without days the tool's own stretch of time is searched.
    Answer findFreeTime(int minutes, const SpokenDays& days) const;
    /// Of its times only `start` has to be there; without a time of day it is a whole day's.
    Answer addEvent(const AgendaIntent& event) const;
    /// `end` may be empty.
    Answer moveEvent(std::string_view id, std::string_view start, std::string_view end, EventWish::Scope scope) const;
    Answer cancelEvent(std::string_view id, EventWish::Scope scope) const;
    /// The same call once more, now that the user has agreed.
    Answer confirmed(std::string_view tool, std::string_view arguments) const;
    /// The same call once more, with another time until which a reminder is put off.
    Answer putOffAgain(std::string_view tool, std::string_view arguments, std::string_view when) const;
    /// The same call once more, for the thing that the user chose.
    Answer chosen(std::string_view tool, std::string_view arguments, std::string_view id) const;
};

} // namespace quorvell
