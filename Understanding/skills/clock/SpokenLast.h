// SPDX-License-Identifier: MIT
// The day that the conversation is at: "how many days until then?" Pure.
#pragma once

#include "Understanding/dialogue/memory/RequestMemory.h"
#include "Understanding/time/LocalTime.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct SpokenLast {
    /// That question with "that day" in place of how it points at it; nothing where it points at no day.
    static std::optional<std::string> question(std::string_view core);
    /// The day that was named last, by them or else in the reply, as "2 december 2026". Empty where there was none,
    /// or more than one.
    static std::string day(const RequestMemory& memory, const LocalTime& around);
};

} // namespace quorvell
