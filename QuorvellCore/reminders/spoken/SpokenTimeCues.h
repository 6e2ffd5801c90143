// SPDX-License-Identifier: MIT
// Tells which ways of speaking a time cannot be in a text, so that it is not searched for them.
#pragma once

#include <string_view>

namespace quorvell {

/// Most texts hold none, and a look over the words costs far less than a search for a pattern. Never rules out a search
/// that would change something.
struct SpokenTimeCues {
    bool relative = false; ///< "half past five"
    bool oClock = false;
    bool marked = false; ///< "five thirty pm"
    bool plain = false; ///< "at five thirty"

    static SpokenTimeCues of(std::string_view text);
};

} // namespace quorvell
