// SPDX-License-Identifier: MIT
// Reads out of an utterance what is asked of a list.
#pragma once

#include "Understanding/skills/lists/ListIntent.h"

#include <optional>
#include <string_view>

namespace quorvell {

struct ListReader {
    /// Nothing for words that are about no list of the user's. `core` is an utterance without its opening and closing
    /// words.
    static std::optional<ListIntent> read(std::string_view core);
};

} // namespace quorvell
