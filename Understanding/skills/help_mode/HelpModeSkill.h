// SPDX-License-Identifier: MIT
// How much the assistant does itself: guide, auto or do.
#pragma once

#include "Understanding/dialogue/Skill.h"

namespace quorvell {

struct HelpModeSkill {
    static const Skill row;
};

} // namespace quorvell
