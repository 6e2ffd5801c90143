// Which words a time can be made of. Pure.
#pragma once

#include "Understanding/RequestWords.h"

#include <cstddef>

namespace quorvell {

/// Reading a time takes a hundred microseconds, and every stretch of a request may be one: those that hold another word
/// need not be read.
struct TimeVocabulary {
    /// Whether all of the words [first, end) are of times, so that together they may be one.
    static bool mayBeTime(const RequestWords& words, std::size_t first, std::size_t end);
};

} // namespace quorvell
