// SPDX-License-Identifier: MIT
// Slips of the keyboard in days, months, parts of the day and numbers: "wensday", "tomorow", "fourty". Pure.
#pragma once

#include <string>
#include <string_view>

namespace quorvell {

struct TimeSpelling {
    /// With those words put right that can be nothing else, wherever they stand but between quotes.
    static std::string repaired(std::string_view words);
};

} // namespace quorvell
