// SPDX-License-Identifier: MIT
// The words that people use for the few things that can be asked for.
#pragma once

#include "Understanding/words/CueWords.h"
#include "Understanding/words/RequestWords.h"

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace quorvell {

struct CueMatch {
    Cue cue{};
    CuePlace place = CuePlace::head;
    std::size_t words = 0; ///< How many it takes.
};

class CueTable {
public:
    /// No two of the cues may claim the same phrase for the same place.
    void add(std::span<const CueWords> rows);
    /// The longest cue that begins at a word; where two are as long, that of the narrower place.
    std::optional<CueMatch> at(const RequestWords& words, std::size_t index, CuePlace place) const;

private:
    struct Entry {
        Cue cue;
        CuePlace place;
        std::vector<std::string> others; ///< Words behind the first.
        bool isLast; ///< Nothing follows it.
    };

    void look(std::string_view first, const RequestWords& words, std::size_t index, CuePlace place,
        std::optional<CueMatch>& best) const;

    std::map<std::string, std::vector<Entry>, std::less<>> m_entries; ///< By their first words.
};

} // namespace quorvell
