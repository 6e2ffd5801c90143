// SPDX-License-Identifier: MIT
// A sum as people say it, in signs: "15 percent of 80" is "15 % * 80". Pure.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct SumWords {
    /// Nothing where the words are no sum: "2027-02-03", "12 eggs".
    static std::optional<std::string> expression(std::string_view core);
    /// The words without "what is" and the like, numbers in digits; for saying back what was worked out.
    static std::string asked(std::string_view core);
};

} // namespace quorvell
