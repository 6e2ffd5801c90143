// SPDX-License-Identifier: MIT
// Texts as the eye takes them: letters of other alphabets that look like Latin ones, invisible signs, ornaments.
#pragma once

#include <string>
#include <string_view>

namespace quorvell {

/// Lower case, compatibility forms as their plain letters, without signs that nobody sees and marks that belong to no
/// letter. Digits and prices stay what they are.
std::string plainForm(std::string_view text);

/// One form for all texts that look alike, by the confusables of Unicode's security standard (UTS 39), whatever the
/// case: to be compared with other such forms only, for "m" is "rn" there and "i" is "l".
std::string asItLooks(std::string_view text);

} // namespace quorvell
