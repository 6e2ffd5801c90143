// SPDX-License-Identifier: MIT
// A request for a reminder, in the user's own words but for its first ones.
#pragma once

#include "Understanding/time/LocalTime.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct ReminderIntent {
    std::string
        text; ///< "remind me tomorrow at 5 pm to call the dentist"; the ways to begin are reduced to "remind me".
    bool isBare = false; ///< Nothing but the wish: neither a task nor a time.

    bool operator==(const ReminderIntent&) const = default;

    /// `wish` is what follows "remind me".
    static ReminderIntent of(std::string_view wish);
    /// Words with a time that ask for nothing by themselves: "in 20 minutes check the oven", "call mum tomorrow at 5".
    /// `timeWords` were read as the time, and `task` is what is left.
    static std::optional<ReminderIntent> readTimed(
        std::string_view core, std::string_view timeWords, std::string_view task);
    /// The answer to "when?", without "let's say" and the like.
    static std::string timeAnswer(std::string_view core);
    /// What is a time and nothing else, numbers in digits; empty for anything else.
    static std::string bareTime(std::string_view core, const LocalTime& around);
    /// The answer to "what about?", without "to", "it's about" and the like.
    static std::string taskAnswer(std::string_view core);
};

} // namespace quorvell
