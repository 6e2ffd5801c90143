// SPDX-License-Identifier: MIT
// What a reminder phrase is searched for, in the order of the search.
#pragma once

#include "QuorvellCore/text/Pattern.h"

namespace quorvell {

/// The text is in lower case.
struct PhrasePatterns {
    Pattern repeat;
    Pattern offset; ///< "in 20 minutes"
    Pattern namedDay;
    Pattern thisPart; ///< "this evening"
    Pattern weekday;
    Pattern nextWeek;
    Pattern dayAndMonth;
    Pattern dayOfMonth;
    Pattern clock;
    Pattern secondChanceClock; ///< Only when `clock` gave no time.
    Pattern part;
    Pattern leadIn; ///< "Hey Quorvell, please remind me to", in any case.

    /// Compiled on first use; read from any thread.
    static const PhrasePatterns& all();

private:
    PhrasePatterns();
};

} // namespace quorvell
