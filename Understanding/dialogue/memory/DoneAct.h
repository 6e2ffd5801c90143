// SPDX-License-Identifier: MIT
// Something that the assistant changed in this conversation, for "undo that" and "what did you just do".
#pragma once

#include "Understanding/dialogue/memory/FoundThing.h"
#include "Understanding/dialogue/memory/ToolRequest.h"

#include <cstddef>
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
    std::size_t turn = 0; ///< Of the words that led to it: what one request changed is taken back as one.
    std::string words{}; ///< That request, without its opening and closing words.

    // What "it" was before; again so once it is taken back:
    std::string_view topic{};
    FoundThing reminder{};
    FoundThing event{};

    bool operator==(const DoneAct&) const = default;
};

} // namespace quorvell
