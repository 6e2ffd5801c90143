// SPDX-License-Identifier: MIT
// What a cue says for (or, below 0, against) kinds of requests, of whichever skill.
#pragma once

#include "Understanding/words/Cue.h"

#include <array>
#include <string_view>

namespace quorvell {

struct KindWeight {
    std::string_view kind{}; ///< Name of a RequestKind.
    int weight = 0;
};

struct CueWeights {
    Cue cue{};
    std::array<KindWeight, 8> weights{}; ///< Those behind the last one stay empty.
};

} // namespace quorvell
