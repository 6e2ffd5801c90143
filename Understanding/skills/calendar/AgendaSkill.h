// SPDX-License-Identifier: MIT
// The calendar: what is on, when there is time, putting events in and changing them.
#pragma once

#include "Understanding/dialogue/Skill.h"

namespace quorvell {

struct AgendaSkill {
    static const Skill row;
};

} // namespace quorvell
