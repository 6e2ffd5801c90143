// SPDX-License-Identifier: MIT
// All that a conversation reports.
#pragma once

#include "Quorvell/session/reports/Doze.h"
#include "Quorvell/session/reports/SessionEnd.h"
#include "Quorvell/session/reports/SessionPhase.h"
#include "Quorvell/session/reports/SessionUsage.h"
#include "Quorvell/session/reports/ThoughtSummary.h"
#include "QuorvellCore/automation/TaskPlan.h"
#include "QuorvellCore/live/prompt/HelpMode.h"
#include "QuorvellCore/live/wire/vocabulary/LiveFunctionCall.h"
#include "QuorvellCore/live/wire/vocabulary/LiveFunctionResponse.h"

#include <string>

namespace quorvell {

/// Whoever passes reports on has to take each; whoever only looks is a SessionObserver. Main thread. What a report
/// makes the audience want from the session is asked for later, never from inside the report.
class SessionAudience {
public:
    enum class Words { typed, spoken };
    enum class TurnOutcome {
        answered,
        unanswered, ///< Nothing came for as long as patience lasts.
        interrupted, ///< The user spoke over the answer, or silenced it.
        brokenOff, ///< The conversation ended first.
    };
    enum class Link {
        steady,
        reconnecting, ///< The connection was lost and is being mended; what is said meanwhile is kept.
    };
    enum class Ear {
        closed, ///< No microphone, or the key is not held.
        open,
        hearing, ///< The user is speaking.
        muted,
    };

    virtual ~SessionAudience() = default;

    virtual void phaseChanged(SessionPhase phase) = 0;
    /// Within the phase active.
    virtual void restChanged(Doze doze) = 0;
    /// Within the phase active; a loss that is mended is not told in any other way.
    virtual void linkChanged(Link link) = 0;
    virtual void earChanged(Ear ear) = 0;
    virtual void helpModeChanged(HelpMode mode) = 0;
    /// At most once a second.
    virtual void usageChanged(const SessionUsage& usage) = 0;
    virtual void userSaid(const std::string& text, Words words) = 0;
    virtual void assistantWordsHeard(const std::string& delta) = 0;
    /// The whole of it; when the user spoke over it, only what was heard.
    virtual void assistantSaid(const std::string& text) = 0;
    /// A piece of a written reply that assistantSaid gives whole later.
    virtual void assistantReplyGrew(const std::string& delta) = 0;
    /// What the model lets be known of its thinking about the open turn; empty once another turn begins.
    virtual void thoughtChanged(const ThoughtSummary& thought) = 0;
    virtual void planChanged(const TaskPlan& plan) = 0;
    virtual void toolCalled(const LiveFunctionCall& call) = 0;
    virtual void toolAnswered(const LiveFunctionResponse& response) = 0;
    /// A sentence that says what went wrong and what to do; the conversation goes on.
    virtual void problemArose(const std::string& sentence) = 0;
    virtual void turnCompleted(TurnOutcome outcome) = 0;
    virtual void conversationEnded(const SessionEnd& end) = 0;
};

} // namespace quorvell
