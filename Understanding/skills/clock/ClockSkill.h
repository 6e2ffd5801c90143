// SPDX-License-Identifier: MIT
// The time here and elsewhere, and what there is to know about days.
#pragma once

#include "Understanding/dialogue/Skill.h"

namespace quorvell {

struct ClockSkill {
    static const Skill row;
};

} // namespace quorvell
