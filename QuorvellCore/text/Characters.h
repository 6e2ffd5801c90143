// SPDX-License-Identifier: MIT
// User-perceived characters (ICU's grapheme clusters), the unit of every length limit, and trimming.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quorvell {

/// Bad UTF-8 is repaired with U+FFFD, one for each ill-formed sequence.
std::string repairUtf8(std::string_view text);
bool isUtf8(std::string_view text);

std::size_t characterCount(std::string_view text);

/// The first `count` user-perceived characters.
std::string firstCharacters(std::string_view text, std::size_t count);

/// Without white space and line breaks (Unicode White_Space) at both ends.
std::string trimmed(std::string_view text);

/// Without any of the characters of `set` (UTF-8, code points) or white space at both ends.
std::string trimmed(std::string_view text, std::string_view set);

/// The first user-perceived character in upper case (root locale), the rest as it stands.
std::string withUpperCaseFirst(std::string_view text);

} // namespace quorvell
