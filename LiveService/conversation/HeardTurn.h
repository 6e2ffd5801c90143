// SPDX-License-Identifier: MIT
// What was made of a turn of the user's.
#pragma once

#include "Understanding/dialogue/HeardDoubts.h"

#include <string>

namespace quorvell {

struct HeardTurn {
    std::string text{}; ///< Written form. Empty when no words were recognised.
    HeardDoubts doubts{};
    std::string problem{}; ///< Why turns cannot be recognised at all: a sentence for the user.

    std::string notice{}; ///< A sentence that is told before the answer, such as that another recogniser is used now.

    bool operator==(const HeardTurn&) const = default;
};

} // namespace quorvell
