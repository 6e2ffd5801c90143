// SPDX-License-Identifier: MIT
// Where in a request words are a cue; elsewhere they are part of what it is about.
#pragma once

#include <cstdint>

namespace quorvell {

/// From the narrowest to the widest.
enum class CuePlace : std::uint8_t {
    start, ///< As its first words.
    head, ///< Before what it is about begins.
    anywhere,
    end, ///< Anywhere, and as its last words even where those before them are taken down as they are.
};

} // namespace quorvell
