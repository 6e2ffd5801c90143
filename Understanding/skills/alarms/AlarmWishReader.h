// SPDX-License-Identifier: MIT
// Reads what words want of alarms and timers. Pure.
#pragma once

#include "Understanding/skills/alarms/AlarmWish.h"

#include <optional>
#include <string_view>

namespace quorvell {

struct AlarmWishReader {
    /// Nothing for what is no matter of alarms and timers. `words` are without opening and closing words.
    static std::optional<AlarmWish> read(std::string_view words);
};

} // namespace quorvell
