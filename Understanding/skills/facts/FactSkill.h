// SPDX-License-Identifier: MIT
// Facts about the user that are kept for later conversations.
#pragma once

#include "Understanding/dialogue/Skill.h"

namespace quorvell {

struct FactSkill {
    static const Skill row;
};

} // namespace quorvell
