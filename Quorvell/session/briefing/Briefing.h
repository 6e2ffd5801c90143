// SPDX-License-Identifier: MIT
// Writes what a new line is told: the instructions, the tools, and the conversation so far.
#pragma once

#include "Quorvell/session/connection/LineBriefing.h"
#include "Quorvell/session/settings/SessionSettings.h"
#include "Quorvell/session/tools/HelpModeKeeper.h"
#include "Quorvell/session/tools/ToolDispatcher.h"
#include "Quorvell/session/turn/ConversationTurn.h"

#include <functional>
#include <string>

namespace quorvell {

/// Main thread; all is borrowed.
class Briefing {
public:
    struct Ports {
        const SessionSettings& settings;
        const ToolDispatcher& tools;
        const HelpModeKeeper& modes;
        const ConversationTurn& turn;
        std::function<std::string()> whereAndWhen; ///< In words, as they are at this moment; may be absent.
    };

    explicit Briefing(Ports ports);

    LineBriefing write() const;

private:
    Ports m_ports;
};

} // namespace quorvell
