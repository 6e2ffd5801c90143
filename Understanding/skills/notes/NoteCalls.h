// SPDX-License-Identifier: MIT
// The calls of the notebook's tools. Pure.
#pragma once

#include "Understanding/dialogue/ToolCalls.h"

#include <string_view>

namespace quorvell {

struct NoteCalls {
    static constexpr std::string_view skill = "notes";

    const RuleSurroundings& around;

    ToolCalls::Answer keep(std::string_view title, std::string_view text) const;
    /// At most `limit` notes; 0 leaves the number to the tool.
    ToolCalls::Answer find(std::string_view query, int limit) const;
    /// What the notebook says to a question; `topic` is for the words of the reply.
    ToolCalls::Answer ask(std::string_view question, std::string_view topic) const;
    ToolCalls::Answer facts() const; ///< All about the user.
    ToolCalls::Answer read(std::string_view id) const;
    ToolCalls::Answer remove(std::string_view id) const;
    ToolCalls::Answer open() const;
};

} // namespace quorvell
