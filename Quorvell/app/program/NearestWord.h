// SPDX-License-Identifier: MIT
// Which of the words was meant by one that is none of them: at most two letters were wrong, missing, too many or
// exchanged, fewer in a short word, or its end is missing.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// Empty when none is near.
std::string nearestWord(std::string_view typed, const std::vector<std::string>& words);

} // namespace quorvell
