// SPDX-License-Identifier: MIT
// By which words requests to remember something are known.
#pragma once

#include "Understanding/words/CueWords.h"

#include <span>

namespace quorvell {

struct FactCues {
    static constexpr Cue remember{"remember", Cue::takesDown | Cue::followsTime};
    static constexpr Cue know{"know", Cue::takesDown};

    static std::span<const CueWords> rows();
};

} // namespace quorvell
