// SPDX-License-Identifier: MIT
// Whether somebody who falls silent has said all that they want to say.
//
// The rules are asked what they would do with the words so far. A request that lacks nothing and that nobody goes on
// with is whole; one that the rules would ask back about hangs in the air, and so do words that need another one behind
// them. What may go on but need not (the text of a note, a day behind an hour) is open.
#pragma once

#include "Understanding/dialogue/RuleSurroundings.h"
#include "Understanding/dialogue/memory/RequestMemory.h"

#include <string_view>

namespace quorvell {

enum class UtteranceShape { whole, open, hanging };

/// `words` in written form, as they were heard so far.
UtteranceShape shapeOf(std::string_view words, const RequestMemory& memory, const RuleSurroundings& around);

} // namespace quorvell
