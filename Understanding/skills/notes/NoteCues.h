// SPDX-License-Identifier: MIT
// By which words requests about notes are known.
#pragma once

#include "Understanding/words/CueWords.h"

#include <span>

namespace quorvell {

struct NoteCues {
    static constexpr Cue keep{"keep", Cue::makes | Cue::keeps | Cue::ofWriting};
    static constexpr Cue where{"where"};
    static constexpr Cue wrote{"wrote", Cue::ofWriting}; ///< "did I write"
    static constexpr Cue say{"say", Cue::asksForWriting}; ///< "what does it say"
    static constexpr Cue note{"note", Cue::thing | Cue::container | Cue::ofWriting};
    static constexpr Cue notes{"notes", Cue::thing | Cue::container | Cue::ofWriting};
    static constexpr Cue newest{"newest"};
    static constexpr Cue notebook{"notebook", Cue::container | Cue::ofWriting};

    static std::span<const CueWords> rows();
};

} // namespace quorvell
