// SPDX-License-Identifier: MIT
// Calls of set_mode that wait for the user's own words: a service may report what it heard after the call that it led
// to, and in pieces.
#pragma once

#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/tools/ToolReply.h"
#include "Quorvell/session/tools/ToolReport.h"
#include "QuorvellCore/live/wire/vocabulary/LiveFunctionCall.h"

#include <chrono>
#include <functional>
#include <vector>

namespace quorvell {

/// Main thread; the scheduler is borrowed.
class HeldModeCalls {
public:
    /// For words that have not come at all.
    static constexpr std::chrono::milliseconds longestWait{1'500};
    /// Words of which no further piece came for so long are complete.
    static constexpr std::chrono::milliseconds wordsSettle{300};

    struct Words {
        bool areAwaited = false; ///< The user spoke, and nothing of it has come yet.
        SessionTime last{}; ///< When the last piece of what was spoken came.
    };

    HeldModeCalls(Scheduler& scheduler, std::function<void(ToolReport)> report);

    /// Reports tool_report::HelpModeDue at once where the user's words are complete, later otherwise.
    void ask(const LiveFunctionCall& call, ToolReply reply, const Words& words);
    /// A piece of the user's words has come.
    void wordsCame();
    /// The conversation is over; whatever is held is answered with that.
    void giveUp();

private:
    struct Held {
        LiveFunctionCall call;
        ToolReply reply;
        SessionTime until{};
    };

    void waitUntil(SessionTime moment);
    void reportAll();

    Scheduler& m_scheduler;
    std::function<void(ToolReport)> m_report;
    std::vector<Held> m_held; ///< Oldest first.
    TimerHandle m_timer;
};

} // namespace quorvell
