// SPDX-License-Identifier: MIT
// What is asked about the alarms and timers that there are. Pure.
#pragma once

#include "Understanding/skills/alarms/AlarmLine.h"
#include "Understanding/skills/alarms/AlarmWish.h"

#include <optional>
#include <string>

namespace quorvell {

struct AlarmAsked {
    /// Of a question that has the noun at `cut`.
    static std::optional<AlarmWish> read(const AlarmLine& cut, const std::string& core);
};

} // namespace quorvell
