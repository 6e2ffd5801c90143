// SPDX-License-Identifier: MIT
// The calls that set, list and change what rings. Each says by its arguments that it is of this skill.
#pragma once

#include "Understanding/dialogue/ToolCalls.h"
#include "Understanding/skills/alarms/AlarmWish.h"

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct AlarmCalls {
    static constexpr std::string_view skill = "alarms";
    static constexpr const char* tool = "set_reminder";

    const RuleSurroundings& around;

    /// Whether a call of the tool is one of these.
    static bool owns(const ToolRequest& call);
    static const char* kindOf(bool isOfTimers) { return isOfTimers ? "timer" : "alarm"; }

    ToolCalls::Answer setAlarm(std::string_view text, std::string_view name) const;
    ToolCalls::Answer setAlarmAt(std::string_view title, const DateParts& date, std::string_view repeat) const;
    ToolCalls::Answer setTimer(std::chrono::seconds length, std::string_view name) const;
    ToolCalls::Answer startAgain(std::string_view id, std::chrono::seconds length) const;
    ToolCalls::Answer list(const char* kind) const;
    ToolCalls::Answer stop() const;
    ToolCalls::Answer snooze(std::chrono::minutes length) const;
    /// `name` are words of it; empty for the only one. `flag` is "pause", "resume" or "cancel".
    ToolCalls::Answer withTimer(const char* flag, std::string_view name) const;
    ToolCalls::Answer add(std::chrono::seconds length, std::string_view name, bool isOfAny) const;
    ToolCalls::Answer cancel(const char* kind) const; ///< What rings, or the only one.
    ToolCalls::Answer cancelThis(std::string_view id, bool isOfTimers) const;
    ToolCalls::Answer cancelThese(const std::vector<std::string>& ids) const;
    /// Those that repeat only up to the end of that day.
    ToolCalls::Answer cancelUntil(const std::vector<std::string>& ids, const DateParts& day) const;
    ToolCalls::Answer rename(std::string_view id, bool isOfTimers, std::string_view name) const;
    /// `stored` is a rule in the form of the tools.
    ToolCalls::Answer repeatThis(std::string_view id, std::string_view stored) const;
    ToolCalls::Answer moveThis(std::string_view id, std::string_view when) const;
};

} // namespace quorvell
