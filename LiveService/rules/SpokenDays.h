// SPDX-License-Identifier: MIT
// Days and stretches of time as people name them, in the form that tools take. Pure.
#pragma once

#include "LiveService/rules/RuleSurroundings.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// A stretch of days or hours: both ends in the form of the tools' dates.
struct SpokenDays {
    std::string from; ///< "2026-11-22" or "2026-11-22 12:00".
    std::string to; ///< The last day, or a moment.
    std::string words; ///< For a reply: "tomorrow", "on Friday", "this week".

    /// Nothing when the words are no day: "tomorrow", "on friday afternoon", "this week", "the 5th of december".
    static std::optional<SpokenDays> read(std::string_view words, const RuleSurroundings& around);
    /// The same for the longest stretch of the words that is one. `others` are those around it.
    static std::optional<SpokenDays> find(std::string_view words, const RuleSurroundings& around, std::string& others);
    /// From now on for a month: where an event is looked for whose day nobody named.
    static SpokenDays ahead(const RuleSurroundings& around);

    bool operator==(const SpokenDays&) const = default;
};

/// A moment, or a day, that the words settle on.
struct SpokenMoment {
    std::string date; ///< In the form of the tools' dates; without a time where none was named.
    std::string rest; ///< The words without those of the time.
    bool namesDay = false; ///< Else it is the next time that the clock shows it.
    std::string repeat{}; ///< How it comes back, in the form of the tools; empty for once.

    /// An hour without a half of the day ("at one") is taken between 8 in the morning and 8 in the evening.
    static std::optional<SpokenMoment> read(std::string_view words, const RuleSurroundings& around);
    /// Where something goes that was at `old`: a day or a time of day that the words leave out stays as it was.
    static std::optional<std::string> movedTo(
        std::string_view words, const std::string& old, const RuleSurroundings& around);

    bool operator==(const SpokenMoment&) const = default;
};

/// "45 minutes", "an hour and a half", taken out of the words.
struct SpokenLength {
    int minutes = 0;
    std::string rest; ///< The words without it.

    static std::optional<SpokenLength> read(std::string_view words);

    bool operator==(const SpokenLength&) const = default;
};

} // namespace quorvell
