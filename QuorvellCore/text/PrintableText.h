// SPDX-License-Identifier: MIT
// Text from outside on its way to a screen.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quorvell {

/// Without control characters, which could move the cursor or change the terminal, and without the marks that turn the
/// direction of writing, which make a text read otherwise than it is. Line breaks and tabs stay.
std::string printableText(std::string_view text);
/// What a file or another program calls something, as one line of a terminal that no control character can break.
std::string printableLine(std::string_view text);
/// The same, cut to `most` user-perceived characters, the last of them an ellipsis where something is missing.
std::string printableLine(std::string_view text, std::size_t most);

} // namespace quorvell
