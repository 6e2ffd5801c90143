// SPDX-License-Identifier: MIT
// The way of a tool's answer back to the model that asked, or to the one that took its place.
#pragma once

#include "Quorvell/loop/EventLog.h"
#include "Quorvell/session/connection/ConnectionKeeper.h"
#include "Quorvell/session/outbox/Handover.h"
#include "Quorvell/session/outbox/Outbox.h"
#include "Quorvell/session/tools/ToolReport.h"
#include "Quorvell/session/turn/ConversationTurn.h"

#include <cstdint>

namespace quorvell {

/// Main thread; all is borrowed.
class ToolAnswers {
public:
    struct Ports {
        EventLog& log;
        ConnectionKeeper& lines;
        ConversationTurn& turn;
        Outbox& outbox;
        const Handover& handover;
    };

    explicit ToolAnswers(Ports ports);

    /// A conversation begins; what earlier lines asked for does not concern it.
    void begin() { m_firstSerial = m_ports.lines.serial() + 1; }
    enum class Conversation { active, other }; ///< Whether there is one that has begun.
    void give(const tool_report::Answered& answer, Conversation conversation);

private:
    Ports m_ports;
    std::uint64_t m_firstSerial = 0; ///< Of this conversation's lines.
};

} // namespace quorvell
