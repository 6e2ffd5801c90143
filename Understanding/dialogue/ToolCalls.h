// SPDX-License-Identifier: MIT
// Calls of tools, each only where the session offered its tool. Pure.
#pragma once

#include "QuorvellCore/text/Json.h"
#include "Understanding/dialogue/RuleStep.h"
#include "Understanding/dialogue/RuleSurroundings.h"

#include <string>
#include <string_view>

namespace quorvell {

struct ToolCalls {
    using Answer = decltype(RuleStep::answer);

    /// `purpose` is what cannot be done where the tool is not offered: "set reminders".
    static Answer call(
        const RuleSurroundings& around, std::string_view tool, const Json& arguments, std::string_view purpose);
    /// The same call once more, with another argument.
    static Answer again(std::string_view tool, std::string_view arguments, const char* key, std::string_view value);
    /// The same call once more, for the thing that the user chose.
    static Answer chosen(std::string_view tool, std::string_view arguments, std::string_view id);
};

} // namespace quorvell
