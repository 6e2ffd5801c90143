// SPDX-License-Identifier: MIT
// What is over or will not be is told as news: "I am not going to yoga on saturday", "Ana cancelled lunch". What is
// meant is named and asked about before it goes.
#pragma once

#include "Understanding/dialogue/Request.h"

#include <optional>
#include <string>

namespace quorvell {

struct RemovalNews {
    /// What can be nothing else. `core` is without reasons, `plain` the same in the form of CalendarWords.
    static std::optional<Request> read(
        const std::string& plain, const std::string& core, const RuleSurroundings& around);
    /// What may be something else, and was understood as nothing else: "I'm not having the party anymore".
    static std::optional<Request> readStatement(
        const std::string& plain, const std::string& core, const RuleSurroundings& around);
};

} // namespace quorvell
