// SPDX-License-Identifier: MIT
// What the session itself tells the model about its own doings.
#pragma once

#include "Quorvell/session/reports/AnsweredCall.h"
#include "QuorvellCore/live/prompt/HelpMode.h"
#include "QuorvellCore/live/wire/vocabulary/LiveHistoryEntry.h"

#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// Each begins with QuorvellPrompt::eventPrefix. Tool results and earlier words in it are cut to a bound, so that a
/// message stays small.
struct SessionEvents {
    static constexpr std::size_t mostQuoted = 2000; ///< User-perceived characters of one text or result.

    /// Requests that were not dealt with to their end, as when their connection was lost.
    struct Unfinished {
        std::string requests; ///< In the user's words; never empty.
        std::string heardReply{}; ///< What the user has heard of the answer.
        std::vector<AnsweredCall> done{}; ///< Tools that have answered, oldest first.
        std::vector<LiveFunctionCall> running{}; ///< Those that have not.
    };
    /// Nothing done and nothing heard: the plain words of a missed request.
    static std::string handover(const Unfinished& turn);
    /// Likewise, where the model was there all along and dealt with something else.
    static std::string notTakenUp(const Unfinished& turn);
    /// A tool's answer to a call that an earlier connection asked for.
    static std::string lateResult(const AnsweredCall& answered);
    /// What was said while the connection was already open but not yet in use.
    static std::string turnsMeanwhile(const std::vector<LiveHistoryEntry>& turns);
    static std::string helpModeSwitched(HelpMode mode);
    /// What the program itself has to tell the user, in whole sentences; never empty.
    static std::string announcement(const std::vector<std::string>& sentences);
    /// For the voice: a tool takes long.
    static std::string stillWorking();
};

} // namespace quorvell
