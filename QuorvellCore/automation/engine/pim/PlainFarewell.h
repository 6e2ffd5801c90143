// SPDX-License-Identifier: MIT
// The farewells that are known without asking anybody.
#pragma once

#include <cstddef>
#include <string_view>

namespace quorvell {

struct PlainFarewell {
    static constexpr std::size_t longest = 120; ///< Bytes; a farewell is short.

    /// Every word belongs to a farewell or to what goes with one, and there is a farewell. "Stop" alone is none: it
    /// may be the music that is meant.
    static bool matches(std::string_view text);
};

} // namespace quorvell
