// SPDX-License-Identifier: MIT
// A request taken apart: what hints at what is asked, and what it is about.
#pragma once

#include "Understanding/words/Cue.h"
#include "Understanding/words/CueTable.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct RequestReading {
    std::vector<Cue> cues{}; ///< Each once.
    /// The user's own words without the cues; empty when there are none.
    std::string content{};
    /// The words, once they no longer ask for anything: "that it is late" of "note that it is late".
    bool isVerbatim = false;
    std::string words{}; ///< All of them, as they were read.

    bool has(const Cue& cue) const { return std::ranges::find(cues, cue) != cues.end(); }
    bool hasAny(Cue::Trait trait) const
    {
        return std::ranges::any_of(cues, [trait](const Cue& cue) { return cue.is(trait); });
    }
    void add(const Cue& cue)
    {
        if (!has(cue))
            cues.push_back(cue);
    }

    bool operator==(const RequestReading&) const = default;

    /// `core` is an utterance without its opening and closing words.
    static RequestReading of(std::string_view core, const CueTable& table);
};

} // namespace quorvell
