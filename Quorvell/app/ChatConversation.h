#pragma once

#include "Quorvell/app/LineSource.h"
#include "Quorvell/session/Scheduler.h"
#include "Quorvell/session/SessionController.h"
#include "Quorvell/session/SessionObserver.h"

#include <functional>
#include <optional>
#include <string>

namespace quorvell {

/// Leads a typed conversation: one line, its whole turn, the next line; at the end of the input an orderly good-bye.
/// Main thread.
class ChatConversation : public SessionObserver {
public:
    enum class Partner { person, script }; ///< A person may try again after a failure; a script is told and ends.

    struct Ports {
        Scheduler& scheduler;
        LineSource& lines;
        std::function<void(int exitCode)> finished;
    };

    ChatConversation(Ports ports, Partner partner);

    /// A person is greeted; a script's conversation begins with its first line.
    void begin(SessionController& session);
    void interrupt();

    void turnCompleted(TurnOutcome outcome) override;
    void conversationEnded(const SessionEnd& end) override;

private:
    void askForLine();
    void lineRead(const std::optional<std::string>& line);
    void end(std::string_view reason);
    void finish();

    Ports m_ports;
    Partner m_partner;
    SessionController* m_session = nullptr;
    int m_exitCode = 0;
    bool m_isEnding = false;
    bool m_isBrokenOff = false; ///< The last turn.
    bool m_isAsking = false; ///< The line source owes a line.
    TimerHandle m_next;
};

} // namespace quorvell
