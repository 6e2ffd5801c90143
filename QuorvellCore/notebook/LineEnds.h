// SPDX-License-Identifier: MIT
// The ends of lines, as notes keep them.
#pragma once

#include <string>
#include <string_view>

namespace quorvell {

/// Line feeds for CR LF.
/// A run of carriage returns before a line feed goes whole: what is left of it would be taken for a CR LF at the next
/// reading and change the text again. Other carriage returns stay.
std::string withLineFeeds(std::string_view text);

} // namespace quorvell
