// SPDX-License-Identifier: MIT
// Passes every report on to several others, in their order.
#pragma once

#include "Quorvell/session/reports/SessionAudience.h"

#include <utility>
#include <vector>

namespace quorvell {

/// They are borrowed.
class ObserverGroup : public SessionAudience {
public:
    explicit ObserverGroup(std::vector<SessionAudience*> observers)
        : m_observers(std::move(observers))
    {
    }

    void add(SessionAudience& observer) { m_observers.push_back(&observer); }
    void remove(SessionAudience& observer) { std::erase(m_observers, &observer); }

    void phaseChanged(SessionPhase phase) override { tell(&SessionAudience::phaseChanged, phase); }
    void restChanged(Doze doze) override { tell(&SessionAudience::restChanged, doze); }
    void linkChanged(Link link) override { tell(&SessionAudience::linkChanged, link); }
    void earChanged(Ear ear) override { tell(&SessionAudience::earChanged, ear); }
    void helpModeChanged(HelpMode mode) override { tell(&SessionAudience::helpModeChanged, mode); }
    void usageChanged(const SessionUsage& usage) override { tell(&SessionAudience::usageChanged, usage); }
    void userSaid(const std::string& text, Words words) override { tell(&SessionAudience::userSaid, text, words); }
    void assistantWordsHeard(const std::string& delta) override { tell(&SessionAudience::assistantWordsHeard, delta); }
    void assistantSaid(const std::string& text) override { tell(&SessionAudience::assistantSaid, text); }
    void assistantReplyGrew(const std::string& delta) override { tell(&SessionAudience::assistantReplyGrew, delta); }
    void thoughtChanged(const ThoughtSummary& thought) override { tell(&SessionAudience::thoughtChanged, thought); }
    void planChanged(const TaskPlan& plan) override { tell(&SessionAudience::planChanged, plan); }
    void toolCalled(const LiveFunctionCall& call) override { tell(&SessionAudience::toolCalled, call); }
    void toolAnswered(const LiveFunctionResponse& response) override { tell(&SessionAudience::toolAnswered, response); }
    void problemArose(const std::string& sentence) override { tell(&SessionAudience::problemArose, sentence); }
    void turnCompleted(TurnOutcome outcome) override { tell(&SessionAudience::turnCompleted, outcome); }
    void conversationEnded(const SessionEnd& end) override { tell(&SessionAudience::conversationEnded, end); }

private:
    template <typename Report, typename... Values> void tell(Report report, const Values&... values)
    {
        for (SessionAudience* observer : m_observers)
            (observer->*report)(values...);
    }

    std::vector<SessionAudience*> m_observers;
};

} // namespace quorvell
