// SPDX-License-Identifier: MIT
// A day by one of its names: "friday", "tomorrow", "the 5th", "20 march 2028", "christmas eve".
#pragma once

#include "QuorvellCore/reminders/calendar/Calendar.h"
#include "QuorvellCore/reminders/wording/RequestTokens.h"

#include <optional>

namespace quorvell {

struct NamedDay {
    LocalDay day{};
    int end = 0; ///< The token behind it.

    /// The day that the words from `index` on name, seen from `today`.
    static std::optional<NamedDay> at(const RequestTokens& tokens, int index, LocalDay today);
    /// A feast alone.
    static std::optional<NamedDay> feast(const RequestTokens& tokens, int index, LocalDay today);
    /// "20 march", "march 20th, 2028", "2028-03-20", "20/3/2028" where no other reading is possible.
    static std::optional<NamedDay> date(const RequestTokens& tokens, int index, LocalDay today);
    /// "2028" where it is a year and no time.
    static std::optional<int> year(const RequestTokens& tokens, int index);
};

} // namespace quorvell
