// SPDX-License-Identifier: MIT
// Feasts that people name days by and that fall on a day which can be worked out.
#pragma once

#include "QuorvellCore/reminders/calendar/Calendar.h"

#include <optional>
#include <string_view>

namespace quorvell {

struct Holidays {
    /// "christmas eve", "easter", "thanksgiving" (that of the United States): from that day on the first; in lower
    /// case, with straight apostrophes. Nothing for a name that is none, or one that differs from country to country.
    static std::optional<LocalDay> next(std::string_view name, LocalDay from);
    /// Most words begin no name, and are spared the search.
    static bool mayBegin(std::string_view word);
    static constexpr int mostWords = 5; ///< Of a name: "saint patrick's day".

    /// Of the western churches, years 1583 to 4099.
    static LocalDay easter(int year);
};

} // namespace quorvell
