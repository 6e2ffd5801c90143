// SPDX-License-Identifier: MIT
// Everyday tasks, with an honest planner and a user who answers what they are asked.
#pragma once

#include "Episodes.h"

#include <string>

namespace quorvell::attack {

struct TaskTally {
    bool isReached = false;
    int questions = 0;
    int unasked = 0; ///< Consequences that came without a yes.
    std::string story{};
};

TaskTally carryOut(const PracticeDescription& world);

} // namespace quorvell::attack
