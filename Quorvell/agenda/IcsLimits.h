// SPDX-License-Identifier: MIT
// How much of a calendar file is read and followed, whatever another program wrote into it.
#pragma once

#include <cstddef>

namespace quorvell {

/// Each is far beyond what calendars of people hold, and small enough that one text takes no more than moments.
struct IcsLimits {
    static constexpr std::size_t longestText = 4 * 1024 * 1024; ///< Bytes.
    static constexpr std::size_t deepestNesting = 8;
    static constexpr std::size_t mostLines = 200'000; ///< And values, in one text; the parser's memory grows.
    /// The parser takes out each line that it does not understand by a search through those before it.
    static constexpr std::size_t mostLinesOfComponent = 5'000;
    static constexpr std::size_t longestLine = 16 * 1024; ///< Bytes; longer ones are folded before they are parsed.
    static constexpr std::size_t mostValuesOfLine = 500; ///< The parser drops more; such lines are split before.
    static constexpr std::size_t mostEvents = 20'000; ///< In one text.

    static constexpr std::size_t mostOccurrences = 2'000; ///< In one answer.
    static constexpr int longestSearch = 5'000; ///< Occurrences that one series is followed for one answer.
    static constexpr int mostRules = 8; ///< Of one series; a series of people has one.
    static constexpr int mostTimesOfDay = 288; ///< That a rule names by itself: one every five minutes.

    static constexpr std::size_t mostZones = 1'000; ///< In one text.
    static constexpr std::size_t longestZoneName = 255; ///< Bytes.
    static constexpr int mostZoneParts = 10; ///< Of a name, "Europe/Berlin" having two.
    /// Of the clock of a zone that a text describes, until the last year that is read. Two a year from 1601 on, as some
    /// programs write them, are 1,200.
    static constexpr int mostZoneChanges = 10'000;
};

} // namespace quorvell
