// SPDX-License-Identifier: MIT
// What is said to make a list.
#pragma once

#include "Understanding/skills/lists/ListIntent.h"

#include <optional>
#include <string>

namespace quorvell {

struct ListCreation {
    /// "Make a packing list with socks", "new list: holiday", "a list of boat names". Nothing for other words.
    static std::optional<ListIntent> read(const std::string& text);
};

} // namespace quorvell
