// SPDX-License-Identifier: MIT
// The words that hours and minutes are spoken in.
#pragma once

#include <array>
#include <string_view>

namespace quorvell {

struct SpokenTimeNames {
    /// Index plus one is the hour.
    static constexpr std::array<std::string_view, 12> hours = {
        "one", "two", "three", "four", "five", "six", "seven", "eight", "nine", "ten", "eleven", "twelve"};

    /// Minutes that are spoken as words are multiples of five.
    static constexpr std::array<std::string_view, 12> minutes = {"", "five", "ten", "fifteen", "twenty", "twenty five",
        "thirty", "thirty five", "forty", "forty five", "fifty", "fifty five"};
};

} // namespace quorvell
