// SPDX-License-Identifier: MIT
// Messages on their way to the model, whether there is a connection to take them or not.
#pragma once

#include "Quorvell/session/connection/ConnectionKeeper.h"
#include "Quorvell/session/ports/LiveMessageText.h"
#include "Quorvell/session/reports/UserNotices.h"
#include "Quorvell/session/turn/ConversationTurn.h"
#include "Quorvell/session/usage/TalkMeter.h"

#include <cstddef>
#include <string>
#include <vector>

namespace quorvell {

/// Main thread; all is borrowed.
class Outbox {
public:
    static constexpr std::size_t mostWaiting = 64; ///< Messages for a connection that is not there yet.

    struct Ports {
        ConnectionKeeper& lines;
        ConversationTurn& turn;
        TalkMeter& meter;
        UserNotices& notices;
    };

    explicit Outbox(Ports ports);
    Outbox(const Outbox&) = delete;
    Outbox& operator=(const Outbox&) = delete;

    /// Of the app. One that wants an answer is sent once more when the line is lost in the turn that it is to open, and
    /// told on the device when it is lost then too.
    void send(const LiveMessageText& message);
    /// What the user typed, and how the model is to see it.
    void sendTyped(const std::string& text, const LiveMessageText& wrapped);
    /// Of the session itself: to whoever is there, or to the first that comes.
    void tell(const LiveMessageText& message);

    /// Gives what has waited to the line that is ready now.
    void deliverWaiting();
    /// The line is gone in the course of a turn, and with it what was sent in it.
    void sendAgain();
    /// What was sent in the turn that is over needs not be sent again.
    void forgetSent();
    void forget();

    bool isConnected() const { return m_ports.lines.ready() != nullptr; }
    bool isEmpty() const { return m_waiting.empty(); }
    const std::vector<std::string>& waitingTyped() const { return m_waitingTyped; }

private:
    void deliver(const LiveMessageText& message);
    void await(LiveMessageText message);
    void tellOnDevice(const LiveMessageText& message);

    Ports m_ports;
    std::vector<LiveMessageText> m_waiting; ///< Oldest first; at their head those that were sent once.
    std::size_t m_repeats = 0; ///< How many of them those are.
    std::vector<LiveMessageText> m_unanswered; ///< Of the app, sent in the turn that is open.
    std::vector<LiveMessageText> m_sentAgain; ///< Likewise, for the second time.
    std::vector<std::string> m_waitingTyped; ///< The user's words among those that wait.
};

} // namespace quorvell
