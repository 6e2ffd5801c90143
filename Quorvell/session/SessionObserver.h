#pragma once

#include "Quorvell/session/Doze.h"
#include "Quorvell/session/SessionEnd.h"
#include "Quorvell/session/SessionPhase.h"
#include "Quorvell/session/SessionUsage.h"
#include "QuorvellCore/live/prompt/HelpMode.h"
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

    virtual ~SessionObserver() = default;

    virtual void phaseChanged(SessionPhase) { }
    /// Within the phase active.
    virtual void restChanged(Doze) { }
    /// Within the phase active; a loss that is mended is not told in any other way.
    virtual void linkChanged(Link) { }
    virtual void earChanged(Ear) { }
    virtual void helpModeChanged(HelpMode) { }
    /// At most once a second.
    virtual void usageChanged(const SessionUsage&) { }
    virtual void userSaid(const std::string& /*text*/, Words) { }
    virtual void assistantWordsHeard(const std::string& /*delta*/) { }
    /// The whole of it; when the user spoke over it, only what was heard.
    virtual void assistantSaid(const std::string& /*text*/) { }
    /// A piece of a written reply that assistantSaid gives whole later.
    virtual void assistantReplyGrew(const std::string& /*delta*/) { }
    virtual void toolCalled(const LiveFunctionCall&) { }
    virtual void toolAnswered(const LiveFunctionResponse&) { }
    /// A sentence that says what went wrong and what to do; the conversation goes on.
    virtual void problemArose(const std::string& /*sentence*/) { }
    virtual void turnCompleted(TurnOutcome) { }
    virtual void conversationEnded(const SessionEnd&) { }
};

} // namespace quorvell
