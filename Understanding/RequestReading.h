// SPDX-License-Identifier: MIT
// A request taken apart: what hints at what is asked, and what it is about.
#pragma once

#include "Understanding/Cue.h"

#include <bitset>
#include <string>
#include <string_view>

namespace quorvell {

struct RequestReading {
    std::bitset<static_cast<std::size_t>(Cue::count)> cues{};
    /// The user's own words without the cues; empty when there are none.
    std::string content{};
    /// The words, once they no longer ask for anything: "that it is late" of "note that it is late".
    bool isVerbatim = false;

    bool has(Cue cue) const { return cues.test(static_cast<std::size_t>(cue)); }

    bool operator==(const RequestReading&) const = default;

    /// `core` is an utterance without its opening and closing words.
    static RequestReading of(std::string_view core);
};

} // namespace quorvell
