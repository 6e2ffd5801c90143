// SPDX-License-Identifier: MIT
// What is said to look into a list.
#pragma once

#include "Understanding/skills/lists/ListIntent.h"

#include <optional>
#include <string>

namespace quorvell {

struct ListQuestion {
    /// Nothing for words that ask for none. "Which lists do I have" is asked with `readLists`.
    static std::optional<ListIntent> read(const std::string& text);
    static std::optional<ListIntent> readLists(const std::string& text);
};

} // namespace quorvell
