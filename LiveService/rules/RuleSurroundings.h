// SPDX-License-Identifier: MIT
// What the rules need to know besides the words.
#pragma once

#include "QuorvellCore/reminders/Calendar.h"
#include "QuorvellCore/text/Instant.h"

#include <set>
#include <string>
#include <string_view>

namespace quorvell {

struct RuleSurroundings {
    std::set<std::string, std::less<>> tools; ///< Names that the session offered; no other is ever called.
    Instant now;
    Calendar calendar; ///< Of this computer.

    bool offers(std::string_view tool) const { return tools.contains(tool); }
};

} // namespace quorvell
