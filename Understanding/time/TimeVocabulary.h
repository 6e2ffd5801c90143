// SPDX-License-Identifier: MIT
// Which words a time can be made of. Pure.
#pragma once

#include "Understanding/words/RequestWords.h"

#include <cstddef>
#include <string_view>

namespace quorvell {

/// Reading a time takes a hundred microseconds, and every stretch of a request may be one: those that hold another word
/// need not be read.
struct TimeVocabulary {
    static constexpr std::size_t longest = 10; ///< Words of a time.
    /// As a part of a pattern.
    static constexpr std::string_view weekday = "(?:mon|tues|wednes|thurs|fri|satur|sun)day";

    /// Whether all of the words [first, end) are of times, so that together they may be one.
    static bool mayBeTime(const RequestWords& words, std::size_t first, std::size_t end);
};

} // namespace quorvell
