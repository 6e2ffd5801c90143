// SPDX-License-Identifier: MIT
// How far apart two short words are as they are typed.
#pragma once

#include <cstddef>
#include <string_view>

namespace quorvell {

struct WordDistance {
    static constexpr std::size_t longest = 32; ///< Bytes; longer words are far apart unless they are the same.

    /// Letters put in, left out, changed or swapped with their neighbour; at most 9.
    static std::size_t between(std::string_view left, std::string_view right);
    /// "Rose" and "Rosa", "Jon" and "John", "meyer" and "maier": what is misheard for each other.
    static bool areAlike(std::string_view left, std::string_view right);
};

} // namespace quorvell
