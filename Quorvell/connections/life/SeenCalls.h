// SPDX-License-Identifier: MIT
// The tool calls of one conversation: one that is reported twice runs once.
#pragma once

#include <algorithm>
#include <cstddef>
#include <deque>
#include <string>

namespace quorvell {

struct SeenCalls {
    static constexpr std::size_t remembered = 256;

    std::deque<std::string> recent; ///< Oldest first.

    /// True the first time.
    bool isNew(const std::string& callID)
    {
        if (std::find(recent.begin(), recent.end(), callID) != recent.end())
            return false;
        recent.push_back(callID);
        if (recent.size() > remembered)
            recent.pop_front();
        return true;
    }
};

} // namespace quorvell
