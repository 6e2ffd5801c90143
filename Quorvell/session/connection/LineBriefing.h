// SPDX-License-Identifier: MIT
// What a line is told as it opens.
#pragma once

#include "Quorvell/session/ports/LiveSetup.h"
#include "Quorvell/session/turn/ConversationMemory.h"

namespace quorvell {

/// Where a resumption handle brings the history along, the keeper leaves it out.
struct LineBriefing {
    LiveSetup setup{};
    ConversationMemory::Mark knows = 0; ///< How much of the conversation the history in it tells.
};

} // namespace quorvell
