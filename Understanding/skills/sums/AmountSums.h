// SPDX-License-Identifier: MIT
// Sums of things that are counted or measured: "3 times 125 grams", "5 apples plus 7 apples", "how many working hours
// are 8.5 times 5". Pure.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct AmountSums {
    /// The answer; nothing where something else is asked, and where things do not add up to one kind of thing.
    static std::optional<std::string> answer(std::string_view core);
};

} // namespace quorvell
