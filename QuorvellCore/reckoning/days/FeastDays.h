// SPDX-License-Identifier: MIT
// Days of the year that have a name, fixed and movable. Pure.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct FeastDay {
    std::string name; ///< As it is said: "Easter Sunday", "Mother's Day in Britain".
    std::chrono::sys_days day;

    bool operator==(const FeastDay&) const = default;
};

struct FeastDays {
    /// `name` in lower case without signs: "new years eve". Nothing for a day that is not known.
    static std::optional<FeastDay> in(std::chrono::year year, std::string_view name);
    /// The coming one, from `from` on, that day included.
    static std::optional<FeastDay> next(std::chrono::sys_days from, std::string_view name);
    /// Easter Sunday of the western churches, by the Gregorian computus.
    static std::chrono::sys_days easter(std::chrono::year year);
};

} // namespace quorvell
