// SPDX-License-Identifier: MIT
// How a conversation ended.
#pragma once

#include <string>
#include <vector>

namespace quorvell {

struct SessionEnd {
    std::string reason{}; ///< For the event log and scripts, such as "end of input".
    bool isFailure = false; ///< Nobody asked for it.
    bool mustUserAct = false; ///< Beginning again changes nothing until the user has done something.
    std::string sentence{}; ///< For the user, what happened and what to do next; empty after an orderly end.
    std::vector<std::string> unsent{}; ///< What the user typed that never left.

    bool operator==(const SessionEnd&) const = default;
};

} // namespace quorvell
