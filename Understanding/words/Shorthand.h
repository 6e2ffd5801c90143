// SPDX-License-Identifier: MIT
// Words as they are typed in a hurry: "tmrw", "u", "w/", "@ 5". Pure.
#pragma once

#include <string>

namespace quorvell {

struct Shorthand {
    /// In what surrounds a request: "can u pls".
    static std::string ofFrames(const std::string& words);
    /// Everywhere but between quotes: of times, and of words that no title is made of.
    static std::string spelledOut(const std::string& words);
};

} // namespace quorvell
