// SPDX-License-Identifier: MIT
// Lists: shopping, packing, things to do.
#pragma once

#include "Understanding/dialogue/Skill.h"

namespace quorvell {

struct ListSkill {
    static const Skill row;
};

} // namespace quorvell
