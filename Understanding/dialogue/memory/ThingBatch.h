// SPDX-License-Identifier: MIT
// Things that are taken away one after the other, each by a call of its own, once the user agreed to all.
#pragma once

#include "Understanding/dialogue/memory/FoundThing.h"

#include <cstddef>
#include <string>
#include <vector>

namespace quorvell {

struct ThingBatch {
    std::vector<FoundThing> left{}; ///< The first is the one of the call that is asked for or under way.
    bool isOfSeries = true; ///< What repeats ends; else only this time of it goes.
    std::size_t done = 0;
    std::vector<std::string> goesOn{}; ///< Titles of what comes again.
    std::vector<std::string> failed{}; ///< Titles.

    bool operator==(const ThingBatch&) const = default;
};

} // namespace quorvell
