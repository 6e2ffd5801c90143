// SPDX-License-Identifier: MIT
// How much of a calendar file is read, whatever another program wrote into it.
#pragma once

#include <cstddef>

namespace quorvell {

struct IcsLimits {
    static constexpr std::size_t longestText = 4 * 1024 * 1024; ///< Bytes.
    static constexpr int deepestNesting = 8;
    static constexpr std::size_t mostEvents = 20'000; ///< In one text.
    static constexpr std::size_t mostOccurrences = 2'000; ///< In one answer.
    static constexpr int longestSearch = 5'000; ///< Occurrences that one series is followed for one answer.
};

} // namespace quorvell
