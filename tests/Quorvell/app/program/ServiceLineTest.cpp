// SPDX-License-Identifier: MIT
// Catches an assistant and the service on this computer that do not understand each other over the line between them.
#include "LiveService/server/LiveServer.h"
#include "QtApplication.h"
#include "Quorvell/connections/access/ChildLine.h"
#include "Quorvell/connections/access/HostedAccess.h"
#include "Quorvell/connections/choice/LiveConnectionChoice.h"
#include "RecordingLiveObserver.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace quorvell {
namespace {

struct Mute : SpeechPort {
    void expectSpeech() override { }
    void begin() override { }
    void feed(std::span<const std::int16_t>) override { }
    HeardTurn finish() override { return {}; }
    void speak(std::string_view, std::string_view, const Sink&, std::stop_token) override { }
};

struct ServiceOnALine {
    ServiceOnALine()
    {
        needQtApplication();
        input = dup(line->childsEnd());
        server = std::make_unique<LiveServer>(LiveServer::Settings{.token = "secret",
            .calendar = *Calendar::create("UTC", "en_US"),
            .wallClock = [] { return Instant(std::chrono::sys_days(std::chrono::year(2026) / 11 / 21)); },
            .ids = [this](std::string_view prefix) { return std::string(prefix) + std::to_string(++ids); },
            .makeSpeech = [] { return std::make_unique<Mute>(); }});
        server->serveLine(input, [this] { hasEnded = true; });
        line->childStarted();
    }
    ~ServiceOnALine()
    {
        server.reset();
        close(input);
    }
    LiveAccess access(const char* key = "secret") const
    {
        LiveAccess made{{"localhost", OpenAILiveEndpoint::Security::none}, key, LiveAccess::Place::onDevice};
        made.line = line;
        return made;
    }

    std::shared_ptr<ChildLine> line = std::make_shared<ChildLine>();
    int input = -1;
    int ids = 0;
    bool hasEnded = false;
    std::unique_ptr<LiveServer> server;
};

/// What came of a conversation that types one request.
std::string heldOver(const LiveAccess& access, LiveTransport transport)
{
    HostedAccess source(access);
    RecordingLiveObserver observer;
    LiveConnectionChoice choice(source, {.backend = LiveBackend::onDevice, .transport = transport}, {});
    const auto connection = choice.make(observer, LiveMedium::voice);
    LiveSetup setup;
    setup.tools = Json::array({Json{{"type", "function"}, {"name", "set_reminder"}}});
    connection->open(setup);
    const auto isOver = [&] { return observer.closings > 0 || !observer.all<live_event::ToolCall>().empty(); };
    runUntil([&] { return observer.closings > 0 || !observer.all<live_event::SetupComplete>().empty(); });
    connection->sendMessage({.text = "remind me tomorrow at 5 pm to eat"});
    runUntil(isOver);
    if (observer.closings > 0)
        return observer.closure->sentence;
    return observer.all<live_event::ToolCall>().front().calls.front().name;
}

TEST(ServiceLine, carriesWhatTheNetworkWould)
{
    ServiceOnALine service;
    EXPECT_EQ(heldOver(service.access(), LiveTransport::webSocket), "set_reminder");
    EXPECT_EQ(heldOver(service.access(), LiveTransport::webRTC), "set_reminder") << "asked for by a POST";
    for (const auto transport : {LiveTransport::webSocket, LiveTransport::webRTC})
        EXPECT_NE(heldOver(service.access("wrong"), transport).find("did not accept the API key"), std::string::npos);
    EXPECT_EQ(service.server->port(), 0) << "nobody else finds it";

    // What is no connection is passed over; the end of the line is told.
    service.line->write("nonsense");
    EXPECT_EQ(heldOver(service.access(), LiveTransport::webSocket), "set_reminder");
    service.line->hangUp();
    EXPECT_TRUE(runUntil([&] { return service.hasEnded; }));
    EXPECT_NE(heldOver(service.access(), LiveTransport::webSocket).find("cannot be reached"), std::string::npos);
}

} // namespace
} // namespace quorvell
