// SPDX-License-Identifier: MIT
// Which entry of a list is meant by its name or a part of it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// The one entry that is called so, case and signs apart, else the one that holds these words; where that is several or
/// none, all of those. What is chosen is what was judged, so a part of a name never reaches the screen.
std::vector<std::string> meantOptions(const std::vector<std::string>& options, std::string_view words);

} // namespace quorvell
