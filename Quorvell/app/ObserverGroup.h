#pragma once

#include "Quorvell/session/SessionObserver.h"

#include <utility>
#include <vector>

namespace quorvell {

/// Passes every report on to several observers, in their order. They are borrowed.
class ObserverGroup : public SessionObserver {
public:
    explicit ObserverGroup(std::vector<SessionObserver*> observers)
        : m_observers(std::move(observers))
    {
    }

    void phaseChanged(SessionPhase phase) override { tell(&SessionObserver::phaseChanged, phase); }
    void restChanged(Doze doze) override { tell(&SessionObserver::restChanged, doze); }
    void linkChanged(Link link) override { tell(&SessionObserver::linkChanged, link); }
    void earChanged(Ear ear) override { tell(&SessionObserver::earChanged, ear); }
    void helpModeChanged(HelpMode mode) override { tell(&SessionObserver::helpModeChanged, mode); }
    void usageChanged(const SessionUsage& usage) override { tell(&SessionObserver::usageChanged, usage); }
    void userSaid(const std::string& text, Words words) override { tell(&SessionObserver::userSaid, text, words); }
    void assistantWordsHeard(const std::string& delta) override { tell(&SessionObserver::assistantWordsHeard, delta); }
    void assistantSaid(const std::string& text) override { tell(&SessionObserver::assistantSaid, text); }
    void toolCalled(const LiveFunctionCall& call) override { tell(&SessionObserver::toolCalled, call); }
    void toolAnswered(const LiveFunctionResponse& response) override { tell(&SessionObserver::toolAnswered, response); }
    void problemArose(const std::string& sentence) override { tell(&SessionObserver::problemArose, sentence); }
    void turnCompleted(TurnOutcome outcome) override { tell(&SessionObserver::turnCompleted, outcome); }
    void conversationEnded(const SessionEnd& end) override { tell(&SessionObserver::conversationEnded, end); }

private:
    template <typename Report, typename... Values> void tell(Report report, const Values&... values)
    {
        for (SessionObserver* observer : m_observers)
            (observer->*report)(values...);
    }

    std::vector<SessionObserver*> m_observers;
};

} // namespace quorvell
