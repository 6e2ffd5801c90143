// SPDX-License-Identifier: MIT
// Remembers which responses have ended: servers may report one end twice ("response.completed", "response.done").
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>

namespace quorvell {

struct OpenAIResponseEnds {
    static constexpr std::size_t remembered = 64;

    std::deque<std::string> recent; ///< Oldest first.

    /// True for the first report about this response.
    bool isFirst(std::string_view responseID);

    bool operator==(const OpenAIResponseEnds&) const = default;
};

} // namespace quorvell
