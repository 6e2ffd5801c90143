// SPDX-License-Identifier: MIT
// A conversation for scripts: one JSON object a line, as docs/formats/chat-events.md describes them.
#pragma once

#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/reports/SessionObserver.h"
#include "QuorvellCore/text/Json.h"

#include <iosfwd>
#include <string>
#include <string_view>

namespace quorvell {

class ConversationEvents : public SessionObserver {
public:
    /// Both are borrowed. Times are counted from here on.
    ConversationEvents(std::ostream& out, const Scheduler& clock);

    void phaseChanged(SessionPhase phase) override;
    void restChanged(Doze doze) override;
    void linkChanged(Link link) override;
    void earChanged(Ear ear) override;
    void helpModeChanged(HelpMode mode) override;
    void usageChanged(const SessionUsage& usage) override;
    void userSaid(const std::string& text, Words words) override;
    void assistantSaid(const std::string& text) override;
    void thoughtChanged(const ThoughtSummary& thought) override;
    void planChanged(const TaskPlan& plan) override;
    void toolCalled(const LiveFunctionCall& call) override;
    void toolAnswered(const LiveFunctionResponse& response) override;
    void problemArose(const std::string& sentence) override;
    void turnCompleted(TurnOutcome outcome) override;
    void conversationEnded(const SessionEnd& end) override;

    /// Something that the session does not know of, such as the end of a recording.
    void write(std::string_view event, const Json& fields);

private:
    void tellThought();

    std::ostream& m_out;
    const Scheduler& m_clock;
    SessionTime m_start;
    std::string m_thought; ///< Still growing.
    std::string m_reply; ///< Of the turn that is open.
};

} // namespace quorvell
