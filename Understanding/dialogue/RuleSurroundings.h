// SPDX-License-Identifier: MIT
// What the rules need to know besides the words.
#pragma once

#include "Understanding/time/LocalTime.h"

#include <set>
#include <string>
#include <string_view>

namespace quorvell {

struct RuleSurroundings : LocalTime {
    std::set<std::string, std::less<>> tools{}; ///< Names that the session offered; no other is ever called.

    bool offers(std::string_view tool) const { return tools.contains(tool); }
};

} // namespace quorvell
