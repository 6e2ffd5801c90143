// SPDX-License-Identifier: MIT
// Words that ran together ("setalarm", "5pmtomorrow"), were typed twice, or sound like those that were meant. Pure.
#pragma once

#include <string>

namespace quorvell {

struct WordJoints {
    /// With what requests are made of taken apart and put right; what stands between quotes stays.
    static std::string settled(const std::string& words);
};

} // namespace quorvell
