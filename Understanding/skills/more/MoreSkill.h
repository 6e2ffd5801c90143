// SPDX-License-Identifier: MIT
// More of what was just asked for: "also buy milk".
#pragma once

#include "Understanding/dialogue/Skill.h"

namespace quorvell {

struct MoreSkill {
    static const Skill row;
};

} // namespace quorvell
