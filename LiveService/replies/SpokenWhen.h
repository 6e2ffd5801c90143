// SPDX-License-Identifier: MIT
// Dates in the words of a reply.
#pragma once

#include <string>
#include <string_view>

namespace quorvell {

struct SpokenWhen {
    /// "Sunday 22 November at 5 PM" becomes "Sunday the 22nd of November at 5 PM": clearer to hear. Other forms stay.
    static std::string words(std::string_view when);
    /// The same with "on" where it starts with a weekday.
    static std::string on(std::string_view when);
    /// From "2026-11-22 17:00" or "2026-11-22". Empty for any other text.
    static std::string fromDate(std::string_view date);
    /// "5 in the morning" from "2026-11-22 05:00". Empty for any other text.
    static std::string timeOfDay(std::string_view date);
    /// "5 PM" from "2026-11-22 17:00". Empty for any other text.
    static std::string clock(std::string_view date);
};

} // namespace quorvell
