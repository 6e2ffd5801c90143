// SPDX-License-Identifier: MIT
// Keeps the question that waits for the user's yes in a conversation that it observes.
#pragma once

#include "Quorvell/session/consent/ConsentWords.h"
#include "Quorvell/session/reports/SessionObserver.h"

#include <functional>
#include <optional>
#include <string>

namespace quorvell {

/// The assistant is to put the question; where its turn ends without any, the program itself does. Main thread.
class HeardWords final : public ConsentWords, public SessionObserver {
public:
    /// Shows and speaks a question as the program's own, later, once the turn is over. What was shown comes back as
    /// assistantSaid. Must call `isStillOpen` right before, which tells whether it is still to be put.
    using Put = std::function<void(const std::string& question, std::function<bool()> isStillOpen)>;

    explicit HeardWords(std::function<Instant()> wallClock, Put put = nullptr);

    void ask(const std::string& question) override;
    PendingConsent::Answer settle(const std::string& question) override;

    void userSaid(const std::string& text, Words words) override;
    void assistantWordsHeard(const std::string& delta) override;
    void assistantSaid(const std::string& text) override;
    void turnCompleted(TurnOutcome outcome) override;
    void conversationEnded(const SessionEnd& end) override;

private:
    void finishSounding();

    std::function<Instant()> m_wallClock;
    Put m_put;
    std::optional<PendingConsent> m_pending;
    std::string m_sounding; ///< What the voice says, until all of it is reported.
};

} // namespace quorvell
