// SPDX-License-Identifier: MIT
// Words of a request that name a time and were left over, so that what was understood must not be taken for the whole.
#pragma once

#include "QuorvellCore/reminders/phrase/PhraseFindings.h"
#include "QuorvellCore/reminders/request/PassedOverTime.h"
#include "QuorvellCore/reminders/wording/RequestTokens.h"

#include <vector>

namespace quorvell {

/// Of "every monday and wednesday", of "31 april at 5 pm", of "tomorow at 5 pm". In order; `tokens` know which words
/// were read as the time. Where nothing is returned the rest is a task.
std::vector<PassedOverTime> passedOverTimes(const RequestTokens& tokens, const PhraseFindings& findings);

} // namespace quorvell
