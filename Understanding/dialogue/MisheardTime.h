// SPDX-License-Identifier: MIT
// Words that stand where a day or an hour belongs and are none: "remind me on the fence at 3 pm", "lunch on wins day".
// Pure. Typed words mean themselves; of heard ones it is likelier that a day was heard badly.
#pragma once

#include "Understanding/dialogue/RuleSurroundings.h"
#include "Understanding/dialogue/memory/ToolRequest.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct MisheardTime {
    /// Of words that led to this call: those in question, as they stand there, "on the fence".
    static std::optional<std::string> in(
        std::string_view words, const ToolRequest& call, const RuleSurroundings& around);
    /// Whether the call sets something at a moment that the words tell in full.
    static bool isWhole(const ToolRequest& call, const RuleSurroundings& around);
};

} // namespace quorvell
