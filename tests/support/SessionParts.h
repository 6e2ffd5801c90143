// SPDX-License-Identifier: MIT
// The parts of a session that carry its talk, put together without the session: one line, one turn, nobody who reacts.
#pragma once

#include "FakeDevices.h"
#include "FakeLiveConnection.h"
#include "Quorvell/session/listening/Listening.h"
#include "Quorvell/session/outbox/Handover.h"
#include "Quorvell/session/outbox/Outbox.h"
#include "RecordingObserver.h"
#include "VirtualScheduler.h"
#include "WrittenLog.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace quorvell {

struct SessionParts {
    using Lines = std::vector<std::string>;

    /// A line is opened, and ready.
    void connect()
    {
        lines.open(Arrival::first, {});
        wire->report(live_event::SetupComplete{"sess"});
        wire->sent.clear();
    }
    void disconnect() { lines.end("test", ConnectionKeeper::Farewell::silent); }
    /// A tone of that loudness (0 to 127), or silence, at the pace of the clock.
    void sound(std::chrono::milliseconds length, int loudness)
    {
        Bytes chunk(MicrophoneStream::chunkBytes);
        for (std::size_t index = 1; index < chunk.size(); index += 4)
            chunk[index] = static_cast<std::uint8_t>(loudness);
        for (; length > std::chrono::milliseconds(0); length -= MicrophoneStream::chunkLength) {
            listening.captured(chunk);
            scheduler.advance(MicrophoneStream::chunkLength);
        }
    }
    void speak()
    {
        sound(std::chrono::seconds(1), 0);
        sound(std::chrono::milliseconds(520), 40);
        sound(std::chrono::seconds(1), 0);
    }
    Lines sentSince() { return std::exchange(wire->sent, {}); }
    Lines saidSince() { return std::exchange(observer.lines, {}); }

    SessionSettings settings;
    VirtualScheduler scheduler;
    FakePlayer player{scheduler};
    FakeCapture capture;
    FakeSynthesiser synthesiser;
    WrittenLog log;
    RecordingObserver observer;
    FakeLiveConnection* wire = nullptr;
    UserNotices notices{observer, &synthesiser, SessionSettings::Replies::spoken};
    TalkMeter meter{nullptr, std::nullopt};
    ConversationTurn turn{
        {scheduler, player, observer, [](const TurnReport&) {}}, SessionSettings::Replies::spoken, settings.patience};
    ConnectionKeeper lines{
        {scheduler, log,
            [this](LiveConnectionObserver& line) {
                auto made = std::make_unique<FakeLiveConnection>(line);
                wire = made.get();
                return made;
            },
            {}, [this](const ConnectionFact& fact) { lines.take(fact, 0); }, [](const LineReport&) {}},
        settings.limits};
    ToolRegistry registry;
    ToolDispatcher tools{registry};
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
    Listening listening{{scheduler, &capture, player, log, observer, lines, turn, meter, quiet, notices,
                            [this](ListeningReport report) { heard.push_back(std::move(report)); }},
        settings};
};

} // namespace quorvell
