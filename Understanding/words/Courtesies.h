// SPDX-License-Identifier: MIT
// What people put around a request to somebody, and a command to a machine needs none of. Pure.
#pragma once

#include <string>

namespace quorvell {

struct Courtesies {
    /// Without "I want that you", "be so kind to" and "do this:" before a verb that asks for something, and without
    /// "yaar", "alright" and "can you do that for me?" behind such a request. Other words stay as they are.
    static std::string removed(const std::string& words);
};

} // namespace quorvell
