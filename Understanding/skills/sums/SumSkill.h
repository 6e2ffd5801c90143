// SPDX-License-Identifier: MIT
// Sums, percentages and units of measure.
#pragma once

#include "Understanding/dialogue/Skill.h"

namespace quorvell {

struct SumSkill {
    static const Skill row;
};

} // namespace quorvell
