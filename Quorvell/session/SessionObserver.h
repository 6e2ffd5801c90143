#pragma once

#include "Quorvell/session/SessionEnd.h"
#include "Quorvell/session/SessionPhase.h"
#include "QuorvellCore/live/wire/LiveFunctionCall.h"
#include "QuorvellCore/live/wire/LiveFunctionResponse.h"

#include <string>

namespace quorvell {

/// The course of a conversation, for whoever shows it. Main thread. Each function may be left as it is. What a report
/// makes the observer want from the session is asked for later, never from inside the report.
class SessionObserver {
public:
    enum class Words { typed, spoken };
    enum class TurnOutcome {
        answered,
        unanswered, ///< Nothing came for as long as patience lasts.
        brokenOff, ///< The conversation ended first.
    };

    virtual ~SessionObserver() = default;

    virtual void phaseChanged(SessionPhase) { }
    virtual void userSaid(const std::string& /*text*/, Words) { }
    virtual void assistantWordsHeard(const std::string& /*delta*/) { }
    virtual void assistantSaid(const std::string& /*text*/) { }
    virtual void toolCalled(const LiveFunctionCall&) { }
    virtual void toolAnswered(const LiveFunctionResponse&) { }
    /// A sentence that says what went wrong and what to do; the conversation goes on.
    virtual void problemArose(const std::string& /*sentence*/) { }
    virtual void turnCompleted(TurnOutcome) { }
    virtual void conversationEnded(const SessionEnd&) { }
};

} // namespace quorvell
