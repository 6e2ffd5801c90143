// SPDX-License-Identifier: MIT
// Alarms without the noun that are to ring or not to: "don't let me sleep past 8", "in half an hour wake me", "let me
// sleep in tomorrow", "9 instead of 6:30". Pure.
#pragma once

#include "Understanding/skills/alarms/AlarmWish.h"

#include <optional>
#include <string>

namespace quorvell {

struct NounlessWaking {
    /// `core` is without what surrounds the request. Nothing for anything else.
    static std::optional<AlarmWish> read(const std::string& core);
};

} // namespace quorvell
