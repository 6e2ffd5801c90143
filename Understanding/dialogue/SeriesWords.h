// SPDX-License-Identifier: MIT
// The words that tell how much of an event that repeats is meant, taken out of the others.
#pragma once

#include "Understanding/dialogue/memory/Wish.h"

#include <string>
#include <string_view>

namespace quorvell {

struct SeriesWords {
    Wish::Scope scope = Wish::Scope::open;
    std::string rest;

    /// "Every monday's yoga", "the whole series", "from now on", "only monday's".
    static SeriesWords read(std::string_view words);
    /// As the answer to the question whether one or all are meant; there a day is one of them.
    static Wish::Scope answer(std::string_view words);

    bool operator==(const SeriesWords&) const = default;
};

} // namespace quorvell
