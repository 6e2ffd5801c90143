// SPDX-License-Identifier: MIT
// The text on one line: each run of white space is one space, none at the ends.
#pragma once

#include <string>
#include <string_view>

namespace quorvell {

std::string onOneLine(std::string_view text);

} // namespace quorvell
