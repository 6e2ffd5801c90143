// SPDX-License-Identifier: MIT
// Alarms and timers, as one of the skills.
#pragma once

#include "Understanding/dialogue/Skill.h"

namespace quorvell {

struct AlarmSkill {
    static const Skill row;
};

} // namespace quorvell
