// SPDX-License-Identifier: MIT
// Checks of what is typed as the value of an option, and their sentences.
#pragma once

#include "Quorvell/app/program/CommandOption.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

struct CommandValues {
    /// Digits alone, so that what passed fits the numbers between the two.
    static CommandOption::Check wholeNumber(std::int64_t least, std::int64_t most);
    static CommandOption::Check oneOf(std::vector<std::string> names);
    /// Of a text that passed the first check.
    static std::int64_t numberOf(std::string_view text);
};

} // namespace quorvell
