// SPDX-License-Identifier: MIT
// For whoever shows some part of a conversation: each report may be passed over.
#pragma once

#include "Quorvell/session/reports/SessionAudience.h"

#include <string>

namespace quorvell {

class SessionObserver : public SessionAudience {
public:
    void phaseChanged(SessionPhase) override { }
    void restChanged(Doze) override { }
    void linkChanged(Link) override { }
    void earChanged(Ear) override { }
    void helpModeChanged(HelpMode) override { }
    void usageChanged(const SessionUsage&) override { }
    void userSaid(const std::string& /*text*/, Words) override { }
    void assistantWordsHeard(const std::string& /*delta*/) override { }
    void assistantSaid(const std::string& /*text*/) override { }
    void assistantReplyGrew(const std::string& /*delta*/) override { }
    void thoughtChanged(const ThoughtSummary&) override { }
    void planChanged(const TaskPlan&) override { }
    void toolCalled(const LiveFunctionCall&) override { }
    void toolAnswered(const LiveFunctionResponse&) override { }
    void problemArose(const std::string& /*sentence*/) override { }
    void turnCompleted(TurnOutcome) override { }
    void conversationEnded(const SessionEnd&) override { }
};

} // namespace quorvell
