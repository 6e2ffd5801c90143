// SPDX-License-Identifier: MIT
// The parts of a session that carry its talk, put together without the session: one line, one turn, nobody who reacts.
#pragma once

#include "Quorvell/session/listening/Listening.h"
#include "Quorvell/session/outbox/Handover.h"
#include "Quorvell/session/outbox/Outbox.h"
#include "SessionSurroundings.h"

#include <memory>

namespace quorvell {

struct SessionParts : SessionSurroundings {
    void captured(std::span<const std::uint8_t> pcm) override { listening.captured(pcm); }

    /// A line is opened, and ready.
    void connect()
    {
        lines.open(Arrival::first, {});
        wire->report(live_event::SetupComplete{"sess"});
        wire->sent.clear();
    }
    void disconnect() { lines.end("test", ConnectionKeeper::Farewell::silent); }

    SessionSettings settings;
    UserNotices notices{observer, &synthesiser, SessionSettings::Replies::spoken};
    TalkMeter meter{nullptr, std::nullopt};
    SpeechRecord speech{player};
    ConversationTurn turn{{scheduler, player, observer, speech, [](const TurnReport&) {}},
        SessionSettings::Replies::spoken, settings.patience};
    ConnectionKeeper lines{
        {scheduler, log,
            [this](LiveConnectionObserver& line) {
                auto made = std::make_unique<FakeLiveConnection>(line);
                wire = made.get();
                return made;
            },
            {}, [this](const ConnectionFact& fact) { lines.take(fact, 0); }, [](const LineReport&) {}},
        settings.limits};
    std::vector<tool_report::Answered> answers;
    ToolDesk desk{{scheduler, tools, log, observer,
                      [this](ToolReport report) {
                          if (auto* answered = std::get_if<tool_report::Answered>(&report))
                              answers.push_back(std::move(*answered));
                      }},
        settings.limits};
    Outbox outbox{{lines, turn, meter, notices}};
    Handover handover{{turn, desk, outbox}};
    QuietWatch quiet{{scheduler, log, [] {}}, settings};
    std::vector<ListeningReport> heard;
    Listening listening{{scheduler, &capture, player, log, observer, lines, turn, meter, quiet, notices, speech,
                            [this](ListeningReport report) { heard.push_back(std::move(report)); }},
        settings};
};

} // namespace quorvell
