// SPDX-License-Identifier: MIT
// By which words more of the same is asked for.
#pragma once

#include "Understanding/words/CueWords.h"

#include <span>

namespace quorvell {

struct MoreCues {
    static constexpr Cue also{"also"};

    static std::span<const CueWords> rows();
};

} // namespace quorvell
