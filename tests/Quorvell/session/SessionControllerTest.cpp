#include "Quorvell/session/SessionController.h"

#include "FakeLiveConnection.h"
#include "RecordingObserver.h"
#include "VirtualScheduler.h"

#include <gtest/gtest.h>

#include <cmath>

namespace quorvell {
namespace {

using namespace std::chrono_literals;
using Lines = std::vector<std::string>;

class SilentLog : public EventLog {
public:
    void record(std::string_view name, const Json& fields) override { text += std::string(name) + dumpJson(fields); }
    std::string text;
};

/// A loudspeaker on the virtual clock.
class FakePlayer : public AudioPlayer {
public:
    explicit FakePlayer(const Scheduler& scheduler)
        : m_scheduler(scheduler)
    {
    }
    void play(std::span<const std::uint8_t> pcm) override
    {
        m_end = std::max(m_end, m_scheduler.now()) + std::chrono::milliseconds(pcm.size() / 48);
    }
    void stop() override { m_end = m_scheduler.now(); }
    std::chrono::milliseconds unplayed() const override { return std::max(m_end - m_scheduler.now(), 0ms); }
    std::chrono::milliseconds played() const override { return {}; }

private:
    const Scheduler& m_scheduler;
    SessionTime m_end{};
};

class SessionControllerTest : public testing::Test {
protected:
    void SetUp() override
    {
        registry.add(
            "keep_note", [this](const LiveFunctionCall&, ToolReply reply) { replies.push_back(std::move(reply)); });
    }

    SessionController& make(SessionSettings settings = {})
    {
        const auto connections = [this](LiveConnectionObserver& session, LiveMedium) {
            auto made = std::make_unique<FakeLiveConnection>(session);
            wire = made.get();
            return made;
        };
        controller.emplace(
            SessionController::Ports{scheduler, connections, player, log, observer, tools, [] { return "Saturday"; }},
            settings);
        return *controller;
    }
    SessionController& makeActive(SessionSettings settings = {})
    {
        make(settings).begin();
        wire->report(live_event::SetupComplete{"sess_1"});
        return *controller;
    }
    Lines saidSince() { return std::exchange(observer.lines, {}); }

    VirtualScheduler scheduler;
    FakePlayer player{scheduler};
    SilentLog log;
    RecordingObserver observer;
    ToolRegistry registry;
    ToolDispatcher tools{registry};
    std::vector<ToolReply> replies;
    FakeLiveConnection* wire = nullptr;
    std::optional<SessionController> controller;
};

SessionSettings shown()
{
    SessionSettings settings;
    settings.replies = SessionSettings::Replies::shown;
    return settings;
}

TEST_F(SessionControllerTest, aTypedRequestWalksThroughToItsReply)
{
    make(shown()).submitTyped({{{"keep a note: buy milk "}}, false});
    EXPECT_EQ(wire->sent, (Lines{"open keep_note"}));
    EXPECT_NE(wire->setup.toolInstructions, "");
    EXPECT_NE(wire->setup.voiceInstructions.find("Saturday"), std::string::npos);

    wire->report(live_event::SetupComplete{"sess_1"});
    EXPECT_EQ(
        wire->sent.back(), "message [They typed] (your reply is shown as text, not spoken) keep a note: buy milk");

    wire->report(live_event::ToolCall{{{"call_1", "keep_note", {{"title", "buy milk"}}}}});
    ASSERT_EQ(replies.size(), 1U);
    replies[0].answer({{"status", "kept"}});
    EXPECT_EQ(wire->sent.back(), R"(tool call_1 {"status":"kept"})");
    wire->reportText("Noted: buy milk.");
    scheduler.advance(5s); // The backend still works on it.
    wire->report(live_event::OutputTranscript{"Noted"});
    wire->report(live_event::BackendIdle{});
    scheduler.settle();
    wire->report(live_event::OutputTranscript{": buy milk."});
    EXPECT_FALSE(controller->isTurnOpen()); // The voice is late, and nobody listens to it.
    EXPECT_EQ(saidSince(),
        (Lines{"connecting", "typed: keep a note: buy milk", "active", "call keep_note", R"(result {"status":"kept"})",
            "said: Noted: buy milk.", "turn answered"}));
    EXPECT_EQ(log.text.find("milk"), std::string::npos) << log.text;
    EXPECT_EQ(controller->conversation(),
        (std::deque<LiveHistoryEntry>{{"user", "keep a note: buy milk"}, {"assistant", "Noted: buy milk."}}));
}

TEST_F(SessionControllerTest, aSpokenTurnEndsOnceItsSoundHasBeenPlayed)
{
    makeActive();
    saidSince();
    wire->report(live_event::InputTranscript{"what is "});
    wire->report(live_event::InputTranscript{"it"});
    wire->report(live_event::Delegated{"d1"});
    wire->report(live_event::BackendIdle{});
    wire->report(live_event::OutputTranscript{"A "});
    wire->report(live_event::OutputTranscript{"test."});
    wire->report(live_event::Audio{Bytes(48000 * 3)}); // Three seconds.
    scheduler.advance(3699ms);
    EXPECT_EQ(saidSince(), (Lines{"spoken: what is it", "words: A ", "words: test."}));
    scheduler.advance(1ms);
    EXPECT_EQ(saidSince(), (Lines{"said: A test.", "turn answered"}));
}

TEST_F(SessionControllerTest, theGreetingIsATurnAndGivesWayToAWaitingRequest)
{
    SessionSettings settings;
    settings.greeting = SessionSettings::Greeting::spoken;
    settings.userName = "Asha";
    makeActive(settings);
    EXPECT_EQ(wire->sent.back(),
        "voice Asha has just called Quorvell over and is looking at their desktop. Say hello warmly and ask what "
        "they'd like to do, in one short sentence.");
    wire->report(live_event::OutputTranscript{"Hello Asha!"});
    scheduler.advance(1s);
    EXPECT_EQ(saidSince(), (Lines{"connecting", "active", "words: Hello Asha!", "said: Hello Asha!", "turn answered"}));

    settings.replies = SessionSettings::Replies::shown;
    makeActive(settings);
    EXPECT_EQ(wire->sent.back().substr(0, 60), "message [Quorvell app event] Asha just called you over. They");
    make(settings).submitTyped({{{"hi"}}, true});
    wire->report(live_event::SetupComplete{"sess_1"});
    EXPECT_EQ(wire->sent.back(), "message [They typed] hi");
}

TEST_F(SessionControllerTest, anUnansweredTurnIsGivenUpAfterPatience)
{
    struct Row {
        const char* name;
        std::function<void(FakeLiveConnection&)> happens;
        Lines said;
    };
    const Row rows[] = {
        {"silence", [](auto&) {}, {"turn unanswered"}},
        {"the backend has nothing to say", [](auto& w) { w.report(live_event::BackendIdle{}); }, {"turn unanswered"}},
        {"the service reports a problem",
            [](auto& w) {
                w.report(live_event::BackendIdle{});
                w.report(live_event::ServerError{"overloaded", "Too busy."});
            },
            {"problem: The service reported a problem: Too busy.", "turn answered"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        makeActive(shown()).submitTyped({{{"hello"}}, false});
        saidSince();
        row.happens(*wire);
        scheduler.advance(61s);
        EXPECT_EQ(saidSince(), row.said);
        EXPECT_FALSE(controller->isTurnOpen());
    }
}

TEST_F(SessionControllerTest, toolCallsAreAnsweredOnceAndOnlyToWhoeverAsked)
{
    makeActive();
    saidSince();
    const live_event::ToolCall call{{{"call_1", "keep_note", {}}}};
    wire->report(call);
    wire->report(call); // A service that repeats itself.
    ASSERT_EQ(replies.size(), 1U);
    EXPECT_EQ(saidSince(), (Lines{"call keep_note"}));

    wire->closeWith({.code = 1006, .reason = "gone", .sentence = "Lost."});
    controller->begin();
    wire->report(live_event::SetupComplete{"sess_2"});
    const auto sent = wire->sent;
    replies[0].answer({{"status", "kept"}});
    EXPECT_EQ(wire->sent, sent); // The new conversation never asked.
    EXPECT_EQ(saidSince().back(), R"(result {"status":"kept"})");

    controller.reset();
    replies.clear(); // A reply that outlives the session is harmless.
}

TEST_F(SessionControllerTest, aCallWithoutAConversationIsRefused)
{
    make();
    std::string error;
    controller->runTool({"call_1", "keep_note", {}},
        ToolReply([&](const Json& result) { error = readString(result, "error").value_or(""); }));
    EXPECT_EQ(error, "No active conversation.");
}

TEST_F(SessionControllerTest, aLostConnectionIsToldInOneSentenceAndLeavesTheSessionIdle)
{
    make(shown()).submitTyped({{{"hello"}}, false});
    wire->closeWith({.code = 401, .reason = "refused", .mustUserAct = true, .sentence = "Key refused."});
    EXPECT_EQ(saidSince(),
        (Lines{"connecting", "typed: hello", "idle", "turn broken off", "ended: Key refused. unsent: hello"}));

    makeActive(shown()).submitTyped({{{"again"}}, false});
    saidSince();
    wire->closeWith({.code = 1006, .reason = "gone", .sentence = "Lost."});
    EXPECT_EQ(
        saidSince(), (Lines{"idle", "turn broken off", "ended: Lost. What you asked last may not have been done."}));
    scheduler.advance(2min);
    EXPECT_EQ(scheduler.pendingTimers(), 0U);

    controller->submitTyped({{{"once more"}}, false}); // The next request begins anew and knows what was said.
    EXPECT_EQ(wire->setup.history, (std::vector<LiveHistoryEntry>{{"user", "again"}}));
}

TEST_F(SessionControllerTest, stopEndsOnceTheConnectionHasClosed)
{
    makeActive();
    saidSince();
    controller->stop("end of input");
    EXPECT_EQ(wire->sent.back(), "close");
    EXPECT_EQ(saidSince(), (Lines{"idle"}));
    wire->report(live_event::OutputTranscript{"late words"});
    wire->closeWith({.code = 1000, .reason = "client_requested"});
    scheduler.settle();
    EXPECT_EQ(saidSince(), (Lines{"ended end of input"}));
    controller->stop("again");
    EXPECT_TRUE(saidSince().empty());
}

constexpr std::size_t chunkSamples = 960; ///< 40 ms

/// A second of silence, half a second of a tone, silence again: 25, 13 and 37 chunks.
Bytes toneInSilence()
{
    Bytes pcm(75 * chunkSamples * 2);
    for (std::size_t index = 25 * chunkSamples; index < 38 * chunkSamples; ++index) {
        const auto sample = static_cast<std::int16_t>(12000 * std::sin(static_cast<double>(index) / 10));
        pcm[2 * index] = static_cast<std::uint8_t>(sample & 0xFF);
        pcm[2 * index + 1] = static_cast<std::uint8_t>((sample >> 8) & 0xFF);
    }
    return pcm;
}

TEST_F(SessionControllerTest, theMicrophoneIsHeardOnlyWhileActiveAndSilenceIsHeldBack)
{
    struct Row {
        SessionSettings::Microphone microphone;
        int chunks;
        int pauses;
    };
    // Through the gate go 8 quiet chunks held before the onset, the 13 loud ones, and 20 quiet ones before it closes.
    for (const Row& row :
        {Row{SessionSettings::Microphone::onlySpeech, 41, 1}, {SessionSettings::Microphone::everything, 75, 0}}) {
        SessionSettings settings;
        settings.microphone = row.microphone;
        make(settings).begin();
        controller->microphoneCaptured(toneInSilence()); // Too early: dropped.
        wire->report(live_event::SetupComplete{"sess_1"});
        const Bytes pcm = toneInSilence();
        for (std::size_t start = 0; start < pcm.size(); start += 1000)
            controller->microphoneCaptured(
                std::span(pcm).subspan(start, std::min<std::size_t>(1000, pcm.size() - start)));
        EXPECT_EQ(wire->audioChunks, row.chunks);
        EXPECT_EQ(wire->audioBytes, row.chunks * 1920);
        EXPECT_EQ(std::count(wire->sent.begin(), wire->sent.end(), "pause"), row.pauses);
    }
}

} // namespace
} // namespace quorvell
