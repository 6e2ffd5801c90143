// SPDX-License-Identifier: MIT
// A client that talks with a scripted service, and what it reported.
#pragma once

#include "QtApplication.h"
#include "Quorvell/connections/access/HostedAccess.h"
#include "Quorvell/connections/life/LiveTimeLimits.h"
#include "Quorvell/connections/life/ServiceExperience.h"
#include "Quorvell/preferences/LiveModelSettings.h"
#include "Quorvell/session/ports/LiveSetup.h"
#include "RecordingLiveObserver.h"

#include <chrono>
#include <cstddef>
#include <utility>

namespace quorvell {

inline LiveSetup someSetup()
{
    LiveSetup setup;
    setup.voiceInstructions = "Be kind.";
    setup.toolInstructions = "Use tools.";
    setup.tools = Json::array({Json{{"type", "function"}, {"name", "keep_note"}}, Json{{"name", "no_such_tool"}}});
    setup.history = {{"user", "hello"}, {"assistant", "hi"}};
    return setup;
}

template <typename Client> struct ClientTalk {
    static constexpr LiveTimeLimits shortLimits{.toClose = std::chrono::milliseconds(300),
        .quietTurn = std::chrono::milliseconds(300),
        .streamSilence = std::chrono::milliseconds(500),
        .firstCreatePause = std::chrono::milliseconds(5)};

    ClientTalk(const LiveAccess& access, const LiveSetup& setup, LiveModelSettings models)
        : source(access)
        , client(source, std::move(models), observer, experience, shortLimits)
    {
        client.open(setup);
        runUntil([&] { return isStarted() || observer.closings > 0; });
    }
    bool isStarted() const { return !observer.all<live_event::SetupComplete>().empty(); }
    template <typename Event> bool waitFor(std::size_t count = 1)
    {
        return runUntil([&] { return observer.all<Event>().size() >= count; });
    }

    RecordingLiveObserver observer;
    HostedAccess source;
    ServiceExperience experience;
    Client client;
};

} // namespace quorvell
