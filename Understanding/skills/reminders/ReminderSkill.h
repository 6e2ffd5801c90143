// SPDX-License-Identifier: MIT
// Setting reminders, listing and changing them.
#pragma once

#include "Understanding/dialogue/Skill.h"

namespace quorvell {

struct ReminderSkill {
    static const Skill row;
};

} // namespace quorvell
