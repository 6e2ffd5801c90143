// SPDX-License-Identifier: MIT
// What people ask an assistant for that is not done on this computer alone: said plainly, never guessed at.
#pragma once

#include "Understanding/dialogue/reach/ReachReply.h"

#include <optional>
#include <string_view>

namespace quorvell::OutOfReach {

/// Nothing for words that may ask for something that can be done here: whatever names a list, a note, a reminder,
/// an alarm, the calendar and the like. `core` is an utterance without its opening and closing words.
std::optional<ReachReply> of(std::string_view core);

} // namespace quorvell::OutOfReach
