// SPDX-License-Identifier: MIT
// A session with everything around it made up, on a clock that the test moves.
#pragma once

#include "FakeDevices.h"
#include "FakeLiveConnection.h"
#include "Quorvell/session/SessionController.h"
#include "RecordingObserver.h"
#include "VirtualScheduler.h"
#include "WrittenLog.h"

#include <cmath>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quorvell {

struct SessionBench {
    using Lines = std::vector<std::string>;

    SessionController& make(SessionSettings settings = {})
    {
        const auto connections = [this](LiveConnectionObserver& session, LiveMedium) {
            auto made = std::make_unique<FakeLiveConnection>(session);
            before = std::exchange(wire, made.get());
            made->during = [this, line = made.get()](const std::string& call) {
                if (during)
                    during(*line, call);
            };
            ++connectionsMade;
            return made;
        };
        controller.reset();
        controller.emplace(
            SessionController::Ports{scheduler, connections, player, log, *audience, tools, [] { return "Saturday"; },
                &capture, &dozeListener, &synthesiser, &usageStore, [this] { return jitter; }},
            std::move(settings));
        return *controller;
    }
    SessionController& makeActive(SessionSettings settings = {})
    {
        make(std::move(settings)).begin();
        becomeReady();
        observer.lines.clear();
        return *controller;
    }
    /// These tools have an owner, which answers when the test likes.
    void own(std::initializer_list<const char*> names)
    {
        for (const char* name : names)
            registry.add(
                name, [this](const LiveFunctionCall&, ToolReply reply) { replies.push_back(std::move(reply)); });
    }
    void becomeReady() { wire->report(live_event::SetupComplete{"sess_" + std::to_string(connectionsMade)}); }
    void lose() { wire->closeWith({.code = 1006, .reason = "gone", .sentence = "Lost."}); }
    Lines saidSince() { return std::exchange(observer.lines, {}); }
    /// What was sent over the newest connection since this was asked last.
    Lines sentSince() { return std::exchange(wire->sent, {}); }

    /// A tone loud enough for speech, or silence, at the pace of the clock.
    void sound(std::chrono::milliseconds length, double loudness)
    {
        Bytes chunk(MicrophoneStream::chunkBytes);
        for (std::size_t index = 0; index < chunk.size() / 2; ++index) {
            const auto sample = static_cast<std::int16_t>(loudness * std::sin(static_cast<double>(index) / 10));
            chunk[2 * index] = static_cast<std::uint8_t>(sample & 0xFF);
            chunk[2 * index + 1] = static_cast<std::uint8_t>((sample >> 8) & 0xFF);
        }
        for (; length > std::chrono::milliseconds(0); length -= MicrophoneStream::chunkLength) {
            controller->microphoneCaptured(chunk);
            scheduler.advance(MicrophoneStream::chunkLength);
        }
    }
    void silence(std::chrono::milliseconds length) { sound(length, 0); }
    /// One second of silence before, so that the gate knows the room, and one after, so that it closes.
    void speak(std::chrono::milliseconds length = std::chrono::milliseconds(520))
    {
        silence(std::chrono::milliseconds(1000));
        sound(length, 12000);
        silence(std::chrono::milliseconds(1000));
    }
    void hearAssistant(const std::string& words, std::chrono::milliseconds length)
    {
        wire->report(live_event::OutputTranscript{words});
        wire->report(live_event::Audio{Bytes(static_cast<std::size_t>(length.count()) * 48)});
    }
    void callTool(const std::string& id, const std::string& name, const Json& args = Json::object())
    {
        wire->report(live_event::ToolCall{{{id, name, args}}});
    }

    VirtualScheduler scheduler;
    FakePlayer player{scheduler};
    FakeCapture capture;
    FakeDozeListener dozeListener;
    FakeSynthesiser synthesiser;
    FakeUsageStore usageStore;
    double jitter = 0;
    WrittenLog log;
    RecordingObserver observer;
    SessionAudience* audience = &observer; ///< Set before `make` to let others see the conversation.
    ToolRegistry registry;
    ToolDispatcher tools{registry};
    std::vector<ToolReply> replies; ///< What tests answer when they like.
    FakeLiveConnection* wire = nullptr; ///< The newest connection.
    FakeLiveConnection* before = nullptr; ///< The one made before it; gone once both have closed.
    std::function<void(FakeLiveConnection&, const std::string& call)> during; ///< Runs inside each.
    int connectionsMade = 0;
    std::optional<SessionController> controller;
};

} // namespace quorvell
