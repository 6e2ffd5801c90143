// SPDX-License-Identifier: MIT
// One earlier turn of the conversation.
#pragma once

#include <string>

namespace quorvell {

struct LiveHistoryEntry {
    std::string role; ///< "user" or "assistant".
    std::string text;

    bool operator==(const LiveHistoryEntry&) const = default;
};

} // namespace quorvell
