// SPDX-License-Identifier: MIT
// Writing notes, finding and reading them.
#pragma once

#include "Understanding/dialogue/Skill.h"

namespace quorvell {

struct NoteSkill {
    static const Skill row;
};

} // namespace quorvell
