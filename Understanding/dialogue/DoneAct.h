// SPDX-License-Identifier: MIT
// Something that the assistant changed in this conversation, for "undo that" and "what did you just do".
#pragma once

#include "Understanding/dialogue/ToolRequest.h"

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

struct DoneAct {
    std::string_view skill{}; ///< Whose matter it is, a literal.
    std::string what{}; ///< Behind "I": "set a reminder to call Ana, tomorrow at 5 PM".
    ToolRequest call{}; ///< That did it.
    std::optional<ToolRequest> undo{}; ///< Takes it back; nothing where that cannot be.
    std::string whyNot{}; ///< A sentence, where it cannot be taken back.

    bool operator==(const DoneAct&) const = default;
};

} // namespace quorvell
