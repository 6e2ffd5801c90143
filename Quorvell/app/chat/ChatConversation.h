// SPDX-License-Identifier: MIT
// Leads a typed conversation: one message, its whole turn, the next message; at the end of the input an orderly
// good-bye.
#pragma once

#include "Quorvell/app/chat/ChatWord.h"
#include "Quorvell/app/terminal/LineSource.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/SessionController.h"
#include "Quorvell/session/reports/SessionObserver.h"

#include <functional>
#include <optional>
#include <string>

namespace quorvell {

/// Main thread.
class ChatConversation : public SessionObserver {
public:
    enum class Partner { person, script }; ///< A person may try again after a failure; a script is told and ends.
    enum class Voice { none, aloud }; ///< Whether replies are spoken as well.

    struct Ports {
        Scheduler& scheduler;
        LineSource& lines;
        std::function<void(int exitCode)> finished;
        std::function<void(const std::string& sentence)> tell{}; ///< From the program itself.
        std::function<std::string()> usage{}; ///< What was used, in words.
    };

    ChatConversation(Ports ports, Partner partner, Voice voice = Voice::none);

    /// A person is greeted; a script's conversation begins with its first line.
    void begin(SessionController& session);
    /// A person's first one stops the answer (or drops the half-typed line), the second leaves.
    void interrupt();
    /// Whatever goes on: the system wants the program to end.
    void leave();

    void assistantSaid(const std::string& text) override;
    void problemArose(const std::string& sentence) override;
    void turnCompleted(TurnOutcome outcome) override;
    void conversationEnded(const SessionEnd& end) override;

private:
    void askForMessage();
    void messageRead(const std::optional<TypedMessage>& message);
    void carryOut(const ChatWord& word);
    void changeMode(const std::string& name);
    void changeVoice();
    void tell(const std::string& sentence);
    void end(std::string_view reason);
    void finish();

    Ports m_ports;
    Partner m_partner;
    Voice m_voice;
    SessionController* m_session = nullptr;
    int m_exitCode = 0;
    bool m_isEnding = false;
    bool m_isBrokenOff = false; ///< The last turn.
    bool m_hasOnlyProblem = false; ///< This turn: something went wrong, and nothing was said after it.
    bool m_isAsking = false; ///< The line source owes a message.
    bool m_isVoiceOff = false;
    bool m_wasInterrupted = false; ///< Since the last message.
    TimerHandle m_next;
};

} // namespace quorvell
