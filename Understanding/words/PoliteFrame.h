// SPDX-License-Identifier: MIT
// What people say around a request out of politeness, or to give a reason. Pure.
#pragma once

#include <string>

namespace quorvell {

struct PoliteFrame {
    /// "Please be adding milk, thanks in advance" is "please add milk"; "cancel the dentist, my tooth fell out" is
    /// "cancel the dentist".
    static std::string removed(const std::string& words);
};

} // namespace quorvell
