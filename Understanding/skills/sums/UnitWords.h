// SPDX-License-Identifier: MIT
// What is asked of units of measure: "how many cups in a litre", "5 miles in km". Pure.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct UnitWords {
    /// The answer; nothing where something else is asked.
    static std::optional<std::string> answer(std::string_view core);
    /// Whether money of one country is asked for in that of another.
    static bool isCurrency(std::string_view core);
};

} // namespace quorvell
