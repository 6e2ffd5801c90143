// SPDX-License-Identifier: MIT
// The words that hint at several matters, or at none.
#pragma once

#include "Understanding/words/CueWords.h"

#include <span>

namespace quorvell {

struct CommonCues {
    static constexpr Cue filler{"filler"}; ///< Says nothing: "me", "the", "a".
    static constexpr Cue definite{"definite"}; ///< "the", "my": it is there already.
    static constexpr Cue indefinite{"indefinite"}; ///< "a", "another": it is not there yet.
    static constexpr Cue all{"all"}; ///< "all my": not only one of them.
    static constexpr Cue pronoun{"pronoun"}; ///< "it", "that".
    static constexpr Cue make{"make", Cue::makes};
    static constexpr Cue enter{"enter", Cue::makes}; ///< As make, and for nothing that is there already.
    static constexpr Cue find{"find"};
    static constexpr Cue read{"read"};
    static constexpr Cue open{"open"};
    static constexpr Cue show{"show"};
    static constexpr Cue tell{"tell"};
    static constexpr Cue cancel{"cancel"};
    static constexpr Cue move{"move"};
    static constexpr Cue delay{"delay"}; ///< A change of time that fits events and reminders alike.
    static constexpr Cue what{"what"};
    static constexpr Cue when{"when"};
    static constexpr Cue have{"have"}; ///< "do I have"
    static constexpr Cue there{"there"}; ///< "is there"
    static constexpr Cue any{"any"};
    static constexpr Cue topic{"topic", Cue::ofWriting}; ///< "about"
    static constexpr Cue instead{"instead"};
    static constexpr Cue foreign{
        "foreign", Cue::content}; ///< What this service has nothing to do with: "file", "window"

    static std::span<const CueWords> rows();
};

} // namespace quorvell
