// SPDX-License-Identifier: MIT
// Where in a request words are a cue; elsewhere they are part of what it is about.
#pragma once

#include "Understanding/Cue.h"
#include "Understanding/RequestWords.h"

#include <cstddef>
#include <optional>

namespace quorvell {

enum class CuePlace : std::uint8_t {
    start, ///< As its first words.
    head, ///< Before what it is about begins.
    anywhere,
    end, ///< Anywhere, and as its last words even where those before them are taken down as they are.
};

struct CueMatch {
    Cue cue = Cue::filler;
    CuePlace place = CuePlace::head;
    std::size_t words = 0; ///< How many it takes.
};

/// The words that people use for the few things that can be asked for.
struct CueTable {
    /// The longest cue that begins at a word; where two are as long, that which is known first.
    static std::optional<CueMatch> at(const RequestWords& words, std::size_t index, CuePlace place);
};

} // namespace quorvell
