// SPDX-License-Identifier: MIT
// Ways to say one thing, in the form of RequestWords.
#pragma once

#include "Understanding/CueTable.h"

#include <span>
#include <string_view>

namespace quorvell {

struct CueWords {
    Cue cue;
    CuePlace place;
    std::string_view phrases; ///< Apart by "|"; one that ends with "$" is a cue only where nothing follows.

    static std::span<const CueWords> all();
};

} // namespace quorvell
