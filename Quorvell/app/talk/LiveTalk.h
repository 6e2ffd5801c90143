// SPDX-License-Identifier: MIT
// Leads a spoken conversation with the keyboard beside it: Space talks or is quiet, m mutes, s stops the answer, q
// leaves.
#pragma once

#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/SessionController.h"
#include "Quorvell/session/reports/SessionObserver.h"

#include <functional>
#include <string>

namespace quorvell {

/// After an end that nobody asked for, Space begins anew. Main thread.
class LiveTalk : public SessionObserver {
public:
    struct Ports {
        Scheduler& scheduler;
        std::function<void(const std::string& sentence)> tell; ///< From the program itself.
        std::function<std::string()> usage; ///< What was used, in words.
        std::function<void(int exitCode)> finished;
    };

    LiveTalk(Ports ports, SessionSettings::Listening listening);

    void begin(SessionController& session);
    void keyPressed(char key);
    /// The first one stops an answer, the next leaves.
    void interrupt();
    /// Whatever goes on: the system wants the program to end.
    void leave();
    bool isKeyHeld() const { return m_isKeyHeld; }
    /// What the keys do, for the first line.
    static std::string keysText(SessionSettings::Listening listening);

    void turnCompleted(TurnOutcome outcome) override;
    void conversationEnded(const SessionEnd& end) override;

private:
    void talkKey();
    void toggleMute();
    void end(std::string_view reason);

    Ports m_ports;
    SessionSettings::Listening m_listening;
    SessionController* m_session = nullptr;
    bool m_isKeyHeld = false; ///< A terminal tells no release, so the key is pressed twice.
    bool m_isEnding = false;
    bool m_wasInterrupted = false; ///< In this turn.
    TimerHandle m_next;
};

} // namespace quorvell
