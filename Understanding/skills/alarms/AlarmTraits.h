// SPDX-License-Identifier: MIT
// What words want of an alarm's or a timer's name, rule and tone, and of its place beside another one. Pure.
#pragma once

#include "Understanding/skills/alarms/AlarmLine.h"
#include "Understanding/skills/alarms/AlarmWish.h"

#include <optional>
#include <string>

namespace quorvell {

struct AlarmTraits {
    /// "Rename the oven timer to cake", "call my alarm gym". The new name may be left out.
    static std::optional<AlarmWish> readRename(const AlarmLine& cut);
    /// "Repeat my alarm every day", "make the 7 am alarm weekly".
    static std::optional<AlarmWish> readRepeat(const AlarmLine& cut);
    /// "Play my alarm sound", "make the alarm louder".
    static std::optional<AlarmWish> readSound(const std::string& core);
    /// Of words behind a noun that is to be set: "for 30 minutes before swimming".
    static std::optional<AlarmWish> readBefore(const std::string& words);
    /// "The first alarm", "it": no event.
    static bool namesAlarm(const std::string& words);
    /// Whether two times are named of which each wants its own: "7 and another for 8".
    static bool namesSeveral(const std::string& words);
    /// A rule as its reader wants it behind the noun, where "the weekend" may be this one, and days of the week stand
    /// in a row.
    static std::string ruleInTime(const std::string& words);
    /// Whether nothing but a time is said.
    static bool isWholeTime(const std::string& words);
    /// "Daily" as its reader wants it; words without a rule stay as they are.
    static std::string ruleInWords(const std::string& words);
};

} // namespace quorvell
