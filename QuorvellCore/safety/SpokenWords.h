// SPDX-License-Identifier: MIT
// What was said, as words alone.
#pragma once

#include <string>
#include <string_view>

namespace quorvell {

/// Lower case, apostrophes as "'", everything that is no part of a word a space, one space around each word; " " where
/// there is none.
std::string spokenWords(std::string_view text);

} // namespace quorvell
