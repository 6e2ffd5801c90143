// SPDX-License-Identifier: MIT
// Words a tool's result as a brief reply, to be heard and shown. Pure.
#pragma once

#include "LiveService/rules/RequestMemory.h"
#include "LiveService/rules/ToolRequest.h"

#include <string>
#include <string_view>

namespace quorvell {

struct ReplyWording {
    static constexpr std::size_t longestReading = 600; ///< Characters of a note that are read out.
    static constexpr std::size_t titlesNamed = 3; ///< Of the notes found.

    /// `result` is what the tool's owner answered, a JSON text. `memory` tells what a search was for and holds the
    /// user's own words of a request that took several turns.
    static std::string reply(const ToolRequest& call, std::string_view result, const RequestMemory& memory);
};

} // namespace quorvell
