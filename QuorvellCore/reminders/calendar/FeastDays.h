// SPDX-License-Identifier: MIT
// Days of the year that have a name, fixed and movable. Pure.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct FeastDay {
    std::string name; ///< As it is said: "Easter Sunday", "Mother's Day in Britain".
    std::chrono::sys_days day;

    bool operator==(const FeastDay&) const = default;
};

struct FeastDays {
    /// Which names are believed. A request is only given a day by a name that means one day and nothing else; a
    /// question is answered with the full name.
    enum class Names { ofOneDay, all };

    /// `name` in lower case: "new year's eve", "thanksgiving" (that of the United States). Nothing for a day that is
    /// not known.
    static std::optional<FeastDay> in(std::chrono::year year, std::string_view name, Names among = Names::all);
    /// The coming one, from `from` on, that day included.
    static std::optional<FeastDay> next(std::chrono::sys_days from, std::string_view name, Names among = Names::all);
    /// What is on that day.
    static std::vector<std::string> on(std::chrono::sys_days day);
    /// Of a name in a request. Most words begin none, and are spared the search.
    static bool mayBegin(std::string_view word);
    static constexpr int mostWords = 5; ///< Of a name in a request: "saint patrick's day".
    /// Easter Sunday of the western churches, by the Gregorian computus.
    static std::chrono::sys_days easter(std::chrono::year year);
};

} // namespace quorvell
