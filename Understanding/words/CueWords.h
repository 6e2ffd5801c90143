// SPDX-License-Identifier: MIT
// Ways to say one thing, in the form of RequestWords.
#pragma once

#include "Understanding/words/Cue.h"
#include "Understanding/words/CuePlace.h"

#include <string_view>

namespace quorvell {

struct CueWords {
    Cue cue{};
    CuePlace place = CuePlace::head;
    std::string_view phrases{}; ///< Apart by "|"; one that ends with "$" is a cue only where nothing follows.
};

} // namespace quorvell
