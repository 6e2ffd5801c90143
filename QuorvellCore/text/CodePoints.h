// SPDX-License-Identifier: MIT
// One step through UTF-8 text. Ill-formed sequences count as U+FFFD, one for each.
#pragma once

#include <cstddef>
#include <string_view>

namespace quorvell {

inline constexpr char32_t replacementCodePoint = 0xFFFD;

/// The code point that starts at `position`, which moves behind it. `position` lies inside the text.
char32_t nextCodePoint(std::string_view text, std::size_t& position);

/// The code point that ends at `position`, which moves to its start. `position` is not 0.
char32_t previousCodePoint(std::string_view text, std::size_t& position);

/// Most texts are; what they need is quick.
bool isAscii(std::string_view text);

/// Unicode White_Space.
bool isWhiteSpace(char32_t codePoint);

} // namespace quorvell
