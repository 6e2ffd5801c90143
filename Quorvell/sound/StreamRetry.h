// SPDX-License-Identifier: MIT
// How often a stream that the server ended is asked for again before the user is told.
#pragma once

#include <chrono>
#include <optional>

namespace quorvell {

/// A value.
struct StreamRetry {
    static constexpr int mostEndings = 3; ///< In a row.
    static constexpr std::chrono::milliseconds first{100}; ///< Each further wait is three times as long.

    int endings = 0;

    /// When to ask again after one more ending; nothing when it is of no use.
    std::optional<std::chrono::milliseconds> ended()
    {
        if (++endings > mostEndings)
            return std::nullopt;
        auto wait = first;
        for (int count = 1; count < endings; ++count)
            wait *= 3;
        return wait;
    }
};

} // namespace quorvell
