// SPDX-License-Identifier: MIT
// Working the applications on the screen: opening, pressing, scrolling, typing, one plain wish at a time.
#pragma once

#include "Understanding/dialogue/Skill.h"

namespace quorvell {

/// The wish goes on as it was said: what it means on the screen is found out where the screen is seen.
struct ScreenSkill {
    static const Skill row;
};

} // namespace quorvell
