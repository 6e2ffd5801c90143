// SPDX-License-Identifier: MIT
// What a program that was killed while it exchanged a calendar file left of it in a temporary file: most often a
// version of its own, but it may be one that another program had just saved, and then there is no other copy.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace quorvell {

struct CalendarRescue {
    static constexpr const char* folderName = ".history"; ///< Hidden, so that its files are no events.
    static constexpr std::chrono::hours age{24}; ///< Younger ones may be of a program that is at work elsewhere.
    static constexpr std::size_t mostKept = 20;

    /// Moves old temporary files of `folder` into that folder, from which the oldest go. What cannot be moved stays.
    /// Blocks.
    static void keepWhatWasLeft(const std::string& folder);
};

} // namespace quorvell
