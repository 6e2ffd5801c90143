// SPDX-License-Identifier: MIT
// Readers of one spoken time each, tried at every word of a text by spokenToWritten.
#pragma once

#include "Understanding/time/SpokenWords.h"

#include <cstddef>
#include <optional>
#include <string>

namespace quorvell {

/// What some words become.
struct WrittenTime {
    std::string text;
    std::size_t words = 0; ///< How many it replaces.
};

/// "five p m", "seven oh five", "half past six", "at nine o'clock", "seventeen thirty", "twelve noon".
std::optional<WrittenTime> spokenClockAt(const SpokenWords& words, std::size_t place);

/// "the fifth of march", "december twelfth", "the twenty first".
std::optional<WrittenTime> spokenDateAt(const SpokenWords& words, std::size_t place);

/// "twenty five minutes", "in an hour and a half", "two days from now".
std::optional<WrittenTime> spokenSpanAt(const SpokenWords& words, std::size_t place);

} // namespace quorvell
