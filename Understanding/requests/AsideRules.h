// SPDX-License-Identifier: MIT
// A question that is open when something else is asked for waits, and is asked once more afterwards. Pure.
#pragma once

#include "Understanding/dialogue/RuleStep.h"

namespace quorvell {

struct AsideRules {
    /// What the reply follows from. Words that are not understood may go to somebody who understands them, and nothing
    /// is asked behind them; a result that was no use is said as it is.
    enum class Behind { words, result };

    /// Puts the open question of `before` aside, in the memory of what was asked for meanwhile. Not one that was put
    /// aside already, that the new words settle, or that nothing is lost with.
    static void put(const RequestMemory& before, const std::string& core, RequestMemory& memory);
    /// Asks it again behind a reply that is no question itself.
    static RuleStep takenUp(RuleStep step, Behind behind);
};

} // namespace quorvell
