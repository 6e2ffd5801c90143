// SPDX-License-Identifier: MIT
// What a connection that takes over is told of the requests that the one before it was at, and of what was said
// meanwhile.
#pragma once

#include "Quorvell/session/outbox/Outbox.h"
#include "Quorvell/session/tools/ToolDesk.h"
#include "Quorvell/session/turn/ConversationMemory.h"
#include "Quorvell/session/turn/ConversationTurn.h"
#include "Quorvell/session/turn/SessionEvents.h"

#include <optional>
#include <string>

namespace quorvell {

/// Main thread; all is borrowed.
class Handover {
public:
    struct Ports {
        ConversationTurn& turn;
        const ToolDesk& desk;
        Outbox& outbox;
    };

    explicit Handover(Ports ports);
    Handover(const Handover&) = delete;
    Handover& operator=(const Handover&) = delete;

    void lineLost();
    /// The line that stands in for the lost one is ready: tells what is unfinished.
    void lineMended();
    /// A line that takes over after a rest knows nothing of one that was lost on the way.
    void lineWoken() { m_lostRequests.clear(); }
    /// Tells what was settled since the line was opened.
    void tellTurnsSince(ConversationMemory::Mark known);
    /// The model was there, and dealt with something else.
    void tellMissed();
    void turnClosed();
    void forget();

    /// Requests are about to be handed over, and with them the results of the calls that they led to.
    bool isPending() const { return !m_lostRequests.empty(); }

private:
    SessionEvents::Unfinished unfinished(std::string requests, std::string heardReply) const;

    Ports m_ports;
    std::string m_lostRequests; ///< Of the turn that a lost line was at.
    std::string m_lostReplies; ///< What the user had heard in answer to them.
    /// The open turn ran over an earlier line and was finished there; the present one is told once it is settled.
    std::optional<ConversationMemory::Mark> m_untoldSince;
};

} // namespace quorvell
