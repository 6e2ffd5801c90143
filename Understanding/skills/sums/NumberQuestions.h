// SPDX-License-Identifier: MIT
// Whether a number is prime, the factorial of one, the sum of several. Pure.
#pragma once

#include <optional>
#include <string>

namespace quorvell {

struct NumberQuestions {
    /// The answer; nothing where something else is asked.
    static std::optional<std::string> answer(const std::string& core);
};

} // namespace quorvell
