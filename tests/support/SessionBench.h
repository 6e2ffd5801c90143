// SPDX-License-Identifier: MIT
// A session with everything around it made up, on a clock that the test moves.
#pragma once

#include "Quorvell/session/SessionController.h"
#include "SessionSurroundings.h"

#include <optional>

namespace quorvell {

/// What happens in a row of a table, one thing after the other.
using Step = std::function<void()>;
using Steps = std::vector<Step>;

inline void carryOut(const Steps& steps)
{
    for (const Step& step : steps)
        step();
}

inline std::string lastOf(const std::vector<std::string>& lines)
{
    return lines.empty() ? "nothing" : lines.back();
}

struct SessionBench : SessionSurroundings {
    void captured(std::span<const std::uint8_t> pcm) override { controller->microphoneCaptured(pcm); }

    SessionController& make(SessionSettings settings = {})
    {
        const auto connections = [this](LiveConnectionObserver& session, LiveMedium) {
            auto made = std::make_unique<FakeLiveConnection>(session);
            before = std::exchange(wire, FakeLine(made.get()));
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
                &capture, &dozeListener, &synthesiser, &usageStore, [this] { return jitter; }, {}, watch},
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
    void type(const std::string& words) { controller->submitTyped({{{words}}, true}); }
    Step pass(std::chrono::milliseconds time)
    {
        return [this, time] { scheduler.advance(time); };
    }
    Step hear(const char* words)
    {
        return [this, words] { wire->report(live_event::InputTranscript{words}); };
    }
    /// The last that was sent over the newest connection.
    std::string lastSent() const { return lastOf(wire->sent); }
    void hearAssistant(const std::string& words, std::chrono::milliseconds length)
    {
        wire->report(live_event::OutputTranscript{words});
        wire->report(live_event::Audio{Bytes(static_cast<std::size_t>(length.count()) * 48)});
    }
    void callTool(const std::string& id, const std::string& name, const Json& args = Json::object())
    {
        wire->report(live_event::ToolCall{{{id, name, args}}});
    }

    FakeDozeListener dozeListener;
    FakeUsageStore usageStore;
    double jitter = 0;
    SessionAudience* audience = &observer; ///< Set before `make` to let others see the conversation.
    ActionWatch* watch = &ActionWatch::nobody(); ///< Likewise, for whoever acts.
    std::vector<ToolReply> replies; ///< What tests answer when they like.
    FakeLine before; ///< The one made before it; gone once both have closed.
    std::function<void(FakeLiveConnection&, const std::string& call)> during; ///< Runs inside each.
    int connectionsMade = 0;
    std::optional<SessionController> controller;
};

} // namespace quorvell
