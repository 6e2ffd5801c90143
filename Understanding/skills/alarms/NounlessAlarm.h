// SPDX-License-Identifier: MIT
// Lines about alarms and timers that name neither, and can mean nothing else: "wake me at 7", "how long does the oven
// still need". Pure.
#pragma once

#include "Understanding/skills/alarms/AlarmWish.h"

#include <optional>
#include <string>

namespace quorvell {

struct NounlessAlarm {
    static std::optional<AlarmWish> read(const std::string& core);
};

} // namespace quorvell
