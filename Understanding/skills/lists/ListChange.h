// SPDX-License-Identifier: MIT
// What is said to change a list.
#pragma once

#include "Understanding/skills/lists/ListIntent.h"

#include <optional>
#include <string>

namespace quorvell {

struct ListChange {
    /// Nothing for words that change no list.
    static std::optional<ListIntent> read(const std::string& text);
};

} // namespace quorvell
