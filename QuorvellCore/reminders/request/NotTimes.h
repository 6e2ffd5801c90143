// SPDX-License-Identifier: MIT
// Words of a request that only look like a time: "5 amazing apples", "£12.50", "sun cream", "the evening meal".
#pragma once

#include "QuorvellCore/reminders/wording/RequestTokens.h"

namespace quorvell {

/// Marks as part of the task what is never a time, and as doubtful what may be one or not. Runs before anything reads
/// a time, so that a part of a word or a price never becomes one.
void markNotTimes(RequestTokens& tokens);

} // namespace quorvell
