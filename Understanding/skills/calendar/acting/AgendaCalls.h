// SPDX-License-Identifier: MIT
// The calls of the calendar's tools. Pure.
#pragma once

#include "Understanding/dialogue/ToolCalls.h"
#include "Understanding/dialogue/memory/FoundThing.h"
#include "Understanding/skills/calendar/reading/AgendaIntent.h"

#include <optional>
#include <string_view>
#include <vector>

namespace quorvell {

struct AgendaCalls {
    static constexpr std::string_view skill = "calendar";

    const RuleSurroundings& around;

    /// With `words` only what holds them.
    ToolCalls::Answer whatsOn(const SpokenDays& days, std::string_view words = {}) const;
    /// Without days the tool's own stretch of time is searched.
    ToolCalls::Answer findFreeTime(int minutes, const std::optional<SpokenDays>& days) const;
    /// Of its times only `start` has to be there; without a time of day it is a whole day's.
    ToolCalls::Answer add(const AgendaIntent& event) const;
    ToolCalls::Answer move(
        std::string_view id, const DateParts& start, const std::optional<DateParts>& end, Wish::Scope scope) const;
    ToolCalls::Answer cancel(std::string_view id, Wish::Scope scope) const;
    /// Several, after one yes.
    ToolCalls::Answer cancelAll(const std::vector<FoundThing>& events, Wish::Scope scope) const;
    /// Another "title" or "place".
    ToolCalls::Answer describe(std::string_view id, const char* what, std::string_view value, Wish::Scope scope) const;
    /// What is said where the calendar cannot be changed; nothing where it can.
    std::optional<ToolCalls::Answer> refusal() const;
};

} // namespace quorvell
