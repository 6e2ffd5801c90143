// SPDX-License-Identifier: MIT
// Which of the things that a tool named somebody means. Pure.
#pragma once

#include "Understanding/dialogue/memory/FoundThing.h"
#include "Understanding/time/LocalTime.h"

#include <optional>
#include <string_view>
#include <vector>

namespace quorvell {

struct Pointing {
    /// Those whose titles hold the words.
    static std::vector<FoundThing> named(const std::vector<FoundThing>& things, std::string_view words);
    /// The only one at that place of the list, of that name, or of that day or time: "the second one", "the one with
    /// Ana", "the one on friday". Nothing when none or several are meant.
    static std::optional<FoundThing> at(
        const std::vector<FoundThing>& things, std::string_view words, const LocalTime& around);
};

} // namespace quorvell
