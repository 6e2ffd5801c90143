// SPDX-License-Identifier: MIT
// What the service says, handed to whom it concerns.
#pragma once

#include "Quorvell/loop/EventLog.h"
#include "Quorvell/session/connection/ConnectionKeeper.h"
#include "Quorvell/session/listening/Listening.h"
#include "Quorvell/session/ports/AudioPlayer.h"
#include "Quorvell/session/quiet/QuietWatch.h"
#include "Quorvell/session/reports/SessionAudience.h"
#include "Quorvell/session/tools/HelpModeKeeper.h"
#include "Quorvell/session/tools/ToolDesk.h"
#include "Quorvell/session/turn/ConversationTurn.h"
#include "Quorvell/session/usage/TalkMeter.h"
#include "QuorvellCore/live/wire/vocabulary/LiveServerEvent.h"

#include <string>

namespace quorvell {

/// Main thread; all is borrowed.
class ServiceEvents {
public:
    struct Ports {
        EventLog& log;
        SessionAudience& observer;
        AudioPlayer& player;
        const ConnectionKeeper& lines;
        ConversationTurn& turn;
        Listening& listening;
        QuietWatch& quiet;
        TalkMeter& meter;
        ToolDesk& desk;
        HelpModeKeeper& modes;
        ActionWatch& watch;
    };

    explicit ServiceEvents(Ports ports);

    /// Of the line that is live.
    void handle(const LiveServerEvent& event);
    /// The model's answer in writing.
    void replyWritten(const std::string& text);
    void replyGrew(const std::string& delta);

private:
    struct Handler;

    void handleVoice(const live_event::Audio& sound);
    void handleVoiceWords(const std::string& words);
    void handleToolCall(const live_event::ToolCall& tool);
    void handleInterrupted();
    void handleServerError(const live_event::ServerError& error);

    Ports m_ports;
};

} // namespace quorvell
