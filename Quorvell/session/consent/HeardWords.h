// SPDX-License-Identifier: MIT
// Keeps the question that waits for the user's yes in a conversation that it observes.
#pragma once

#include "Quorvell/loop/EventLog.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/consent/ConsentWords.h"
#include "Quorvell/session/quiet/QuietWatch.h"
#include "Quorvell/session/reports/ActionWatch.h"
#include "Quorvell/session/reports/SessionObserver.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// The assistant is to put the question; where its turn ends without any, the program itself does. Main thread.
class HeardWords final : public ConsentWords, public SessionObserver, public ActionWatch {
public:
    /// Shows and speaks a question as the program's own, later, once the turn is over. What was shown comes back as
    /// assistantSaid. Must call `isStillOpen` right before, which tells whether it is still to be put.
    using Put = std::function<void(const std::string& question, std::function<bool()> isStillOpen)>;

    /// All but the scheduler may be absent.
    struct Ports {
        Scheduler& scheduler;
        Put put = nullptr;
        EventLog* log = nullptr;
        std::function<SessionTime()> saidUntil =
            nullptr; ///< SessionController::saidUntil; else words are shown at once.
        std::function<bool()> areWordsAwaited = nullptr; ///< SessionController::areWordsAwaited
        std::function<void(QuietWatch::Consent)> note = nullptr; ///< SessionController::noteConsent
    };

    explicit HeardWords(Ports ports);

    void ask(const std::string& question, Told told = nullptr) override;
    Answer settle(const std::string& question) override;
    void settleWhenHeard(const std::string& question, std::function<void(Answer)> settled) override;
    void withdraw(const std::string& question) override;
    /// The user pressed what stands for yes or no beside the question that is shown.
    void pressed(const std::string& question, bool isYes);

    using SessionObserver::userSaid;
    void userSaid(const HeardUtterance& heard) override;
    void assistantWordsHeard(const std::string& delta) override;
    void assistantSaid(const std::string& text) override;
    void turnCompleted(TurnOutcome outcome) override;
    void userBargedIn() override { m_sounding.clear(); }
    void stopped() override;
    void ended() override;

private:
    struct Waiting {
        std::string question;
        std::function<void(Answer)> settled;
    };

    bool isOpen(const std::string& question) const { return m_pending && m_pending->isAbout(question); }
    SessionTime saidUntil() const;
    void assistantSaid(const std::string& text, SessionTime at);
    void finishSounding();
    void judge(const HeardUtterance& heard);
    void awaitLapse();
    void close();
    void closeWith(Event event);
    void tell(Event event);
    void answerWaiting();

    Ports m_ports;
    std::optional<PendingConsent> m_pending;
    Told m_told; ///< Of whoever asks.
    std::string m_sounding; ///< What the voice says, until all of it is reported.
    std::vector<Waiting> m_waiting; ///< For the words of what was heard.
    TimerHandle m_wait;
    TimerHandle m_lapse;
};

} // namespace quorvell
