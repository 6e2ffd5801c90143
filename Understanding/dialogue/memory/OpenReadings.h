// SPDX-License-Identifier: MIT
// What the user may have said, while they are asked which of it they did.
#pragma once

#include "Understanding/dialogue/memory/PendingQuestion.h"

#include <string>
#include <vector>

namespace quorvell {

struct OpenReadings {
    std::vector<std::string> whole{}; ///< All of the words, in each reading.
    std::vector<std::string> pieces{}; ///< Of each the part in which it differs from the others: "8:15".
    PendingQuestion before{}; ///< What the words answered, if anything.

    bool operator==(const OpenReadings&) const = default;
};

} // namespace quorvell
