#pragma once

#include <string>

namespace quorvell {

/// One earlier turn of the conversation.
struct LiveHistoryEntry {
    std::string role; ///< "user" or "assistant".
    std::string text;

    bool operator==(const LiveHistoryEntry&) const = default;
};

} // namespace quorvell
