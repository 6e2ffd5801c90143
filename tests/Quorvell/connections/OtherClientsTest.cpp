// SPDX-License-Identifier: MIT
// The clients of the other protocols: Gemini's live sessions and typed conversations over the Responses service.
#include "Quorvell/connections/gemini/GeminiLiveClient.h"
#include "Quorvell/connections/responses/ResponsesTextConnection.h"
#include "QuorvellCore/live/wire/gemini/GeminiClientParser.h"
#include "QuorvellCore/live/wire/gemini/GeminiServerMessage.h"
#include "QuorvellCore/live/wire/responses/ResponsesRequestReader.h"
#include "QuorvellCore/live/wire/responses/ResponsesStreamWriter.h"
#include "ScriptedServices.h"

#include <gtest/gtest.h>

namespace quorvell {
namespace {

using namespace std::chrono_literals;
namespace said = gemini_client;
using Lateness = LiveMessageText::Lateness;

constexpr LiveTimeLimits shortLimits{
    .toClose = 300ms, .quietTurn = 300ms, .streamSilence = 500ms, .firstCreatePause = 5ms};

LiveSetup someSetup()
{
    LiveSetup setup;
    setup.voiceInstructions = "Be kind.";
    setup.toolInstructions = "Use tools.";
    setup.tools = Json::array({Json{{"type", "function"}, {"name", "keep_note"}}, Json{{"name", "no_such_tool"}}});
    setup.history = {{"user", "hello"}, {"assistant", "hi"}};
    return setup;
}

template <typename Client> struct Talk {
    explicit Talk(const LiveAccess& access, const LiveSetup& setup, LiveModelSettings models)
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

using GeminiTalk = Talk<GeminiLiveClient>;

/// Answers the setup, and keeps what else was said.
struct GeminiService {
    GeminiService()
        : server([this](QWebSocket& from, const std::string& text) { hear(from, text); })
    {
    }
    void hear(QWebSocket& from, const std::string& text)
    {
        auto message = GeminiClientParser::parse(text);
        peer = &from;
        if (auto* setup = std::get_if<said::Setup>(&message)) {
            options = std::move(setup->options);
            // As real services do, in a binary frame.
            from.sendBinaryMessage(QByteArray::fromStdString(dumpJson(GeminiServerMessage::setupComplete("s"))));
        } else {
            heard.push_back(std::move(message));
        }
    }
    void tell(const Json& message) { tellerOf (*peer)(message); }
    template <typename Kind> std::vector<Kind> all() const
    {
        std::vector<Kind> found;
        for (const auto& message : heard)
            if (const auto* wanted = std::get_if<Kind>(&message))
                found.push_back(*wanted);
        return found;
    }

    QWebSocket* peer = nullptr;
    LiveSetupOptions options;
    std::vector<GeminiClientMessage> heard;
    ScriptedLiveServer server;
};

class OtherClientsTest : public testing::Test {
protected:
    void SetUp() override { needQtApplication(); }
};

TEST_F(OtherClientsTest, geminiIsSetUpWithWhatTheSessionWants)
{
    GeminiService service;
    GeminiTalk talk(service.server.access(), someSetup(), {});
    ASSERT_TRUE(talk.isStarted());
    EXPECT_EQ(service.server.keyHeader, "secret-key");
    EXPECT_EQ(service.options.systemInstruction, "Be kind.\n\nUse tools.");
    ASSERT_EQ(service.options.tools.size(), 1U);
    const Json& declarations = service.options.tools[0]["functionDeclarations"];
    ASSERT_EQ(declarations.size(), 1U) << "only what is offered and known";
    EXPECT_EQ(declarations[0]["parameters"]["type"], "OBJECT");
    ASSERT_TRUE(runUntil([&] { return !service.heard.empty(); }));
    EXPECT_EQ(
        service.all<said::Content>(), (std::vector<said::Content>{{{{"user", "hello"}, {"assistant", "hi"}}, false}}));

    // A handle stands in for the history.
    LiveSetup again = someSetup();
    again.resumptionHandle = "handle_7";
    GeminiService resumed;
    GeminiTalk second(resumed.server.access(), again, {});
    second.client.sendAudioPause();
    ASSERT_TRUE(runUntil([&] { return !resumed.heard.empty(); }));
    EXPECT_EQ(resumed.options.resumptionHandle, "handle_7");
    EXPECT_TRUE(resumed.all<said::Content>().empty());
}

TEST_F(OtherClientsTest, geminiHearsSoundAtItsOwnRate)
{
    GeminiService service;
    GeminiTalk talk(service.server.access(), {}, {});
    for (int chunk = 0; chunk < 25; ++chunk)
        talk.client.sendAudio(Bytes(1920));
    talk.client.sendAudioPause();
    ASSERT_TRUE(runUntil([&] { return !service.all<said::AudioStreamEnd>().empty(); }));
    std::size_t bytes = 0;
    for (const said::Audio& sound : service.all<said::Audio>())
        bytes += sound.pcm.size();
    EXPECT_NEAR(static_cast<double>(bytes), 32000, 200) << "a second at 16000 Hz";
    service.tell(GeminiServerMessage::audio(Bytes{1, 2, 3, 4}));
    ASSERT_TRUE(talk.waitFor<live_event::Audio>());
}

TEST_F(OtherClientsTest, geminiIsNotInterruptedAndCallsAreAnsweredOnce)
{
    GeminiService service;
    GeminiTalk talk(service.server.access(), {}, {});
    talk.client.sendMessage({.text = "note: milk"});
    ASSERT_TRUE(runUntil([&] { return service.heard.size() == 1; }));
    const std::vector<LiveFunctionCall> calls = {{"1", "keep_note"}, {"2", "look_up"}, {"3", "look_up"}};
    service.tell(GeminiServerMessage::toolCall(calls));
    service.tell(GeminiServerMessage::toolCall(calls));
    service.tell(GeminiServerMessage::toolCallCancellation({"2"}));
    ASSERT_TRUE(talk.waitFor<live_event::ToolCallCancellation>());
    EXPECT_EQ(talk.observer.all<live_event::ToolCall>().size(), 1U);

    talk.client.sendMessage({.text = "late", .lateness = Lateness::worthless});
    talk.client.sendMessage({.text = "by the way", .answer = LiveMessageText::Answer::notWanted});
    talk.client.sendToolResponse({"1", "keep_note", {{"status", "kept"}}}, LiveResponseScheduling::whenIdle);
    talk.client.sendToolResponse({"2", "look_up", {}}, LiveResponseScheduling::whenIdle);
    talk.client.sendToolResponse({"3", "look_up", {}}, LiveResponseScheduling::interrupt);
    talk.client.sendToolResponse({"3", "look_up", {}}, LiveResponseScheduling::interrupt);
    talk.client.dropStale();
    ASSERT_TRUE(runUntil([&] { return service.heard.size() == 3; }));
    EXPECT_TRUE(talk.observer.all<live_event::BackendIdle>().empty());

    service.tell(GeminiServerMessage::turnComplete());
    ASSERT_TRUE(talk.waitFor<live_event::BackendIdle>());
    ASSERT_TRUE(runUntil([&] { return service.heard.size() == 4; }));
    EXPECT_EQ(std::get<said::Content>(service.heard[0]), (said::Content{{{"user", "note: milk"}}, true}));
    const auto answers = service.all<said::ToolResponse>();
    ASSERT_EQ(answers.size(), 2U);
    EXPECT_EQ(answers[0].responses[0].response, (Json{{"status", "kept"}}));
    EXPECT_EQ(answers[1].responses[0].response, (Json{{"scheduling", "INTERRUPT"}}));
    EXPECT_EQ(std::get<said::Content>(service.heard[3]), (said::Content{{{"user", "by the way"}}, false}));

    // A service that never ends its turn does not keep messages waiting for ever.
    talk.client.sendMessage({.text = "one"});
    service.tell(GeminiServerMessage::outputTranscription("Well"));
    talk.client.sendMessage({.text = "two"});
    EXPECT_TRUE(runUntil([&] { return service.heard.size() == 6; }));
    talk.client.close();
    ASSERT_TRUE(runUntil([&] { return talk.observer.closings > 0; }));
    EXPECT_EQ(talk.observer.closure, LiveClosure{});
}

TEST_F(OtherClientsTest, geminiEndsInOneSentence)
{
    GeminiService mute;
    GeminiTalk unanswered(mute.server.access(), {}, {});
    unanswered.client.sendMessage({.text = "hello"});
    ASSERT_TRUE(runUntil([&] { return unanswered.observer.closings > 0; }));
    EXPECT_NE(unanswered.observer.closure->sentence.find("gone silent"), std::string::npos);

    // Sound may have been a noise: one fresh connection is given it, and its silence is believed.
    ServiceExperience experience;
    for (const bool isGivenUp : {true, false}) {
        GeminiTalk unheard(mute.server.access(), {}, {});
        std::swap(unheard.experience, experience);
        unheard.client.sendAudio(Bytes(9600));
        unheard.client.sendAudioPause();
        EXPECT_EQ(runUntil([&] { return unheard.observer.closings > 0; }, isGivenUp ? std::chrono::seconds(5) : 600ms),
            isGivenUp);
        std::swap(unheard.experience, experience);
    }

    LiveSetup resuming;
    resuming.resumptionHandle = "stale";
    const ScriptedLiveServer server([](QWebSocket& peer, const std::string&) {
        peer.close(QWebSocketProtocol::CloseCodePolicyViolated, QStringLiteral("no such handle"));
    });
    GeminiTalk talk(server.access(), resuming, {});
    ASSERT_TRUE(runUntil([&] { return talk.observer.closings > 0; }));
    EXPECT_NE(talk.observer.closure->sentence.find("(no such handle)"), std::string::npos);

    const ScriptedWebServer refusing(ScriptedWebServer::always(ScriptedWebServer::answer("401 Unauthorized")));
    LiveAccess access = refusing.access();
    access.keyName = "GEMINI_API_KEY";
    GeminiTalk refused(access, {}, {});
    ASSERT_TRUE(runUntil([&] { return refused.observer.closings > 0; }));
    EXPECT_NE(refused.observer.closure->sentence.find("Check GEMINI_API_KEY"), std::string::npos);
}

// ---- Typed conversations

constexpr const char* streamHead = "HTTP/1.1 200 OK\r\nContent-Type: text/event-stream\r\nConnection: close\r\n\r\n";

/// Answers the questions in their order, each as one row says; the last row serves all further ones.
struct ResponsesService {
    enum class Then { hangUp, stay };
    struct Answer {
        std::string bytes;
        Then then = Then::hangUp;
    };

    explicit ResponsesService(std::vector<Answer> given)
        : answers(std::move(given))
        , server([this](QTcpSocket& peer, const std::string& body) {
            const Answer& answer = answers[std::min(questions.size(), answers.size() - 1)];
            auto read = ResponsesRequestReader::read(body);
            ASSERT_TRUE(std::holds_alternative<ResponsesRequest>(read));
            questions.push_back(std::get<ResponsesRequest>(std::move(read)));
            peer.write(QByteArray::fromStdString(answer.bytes));
            if (answer.then == Then::hangUp)
                peer.disconnectFromHost();
        })
    {
    }

    static std::string stream(const std::function<std::string(ResponsesStreamWriter&)>& rest, const char* id = "resp_1")
    {
        ResponsesStreamWriter writer(id);
        std::string bytes = streamHead + writer.created();
        return bytes + rest(writer);
    }
    static std::string saying(const char* text)
    {
        return stream([&](ResponsesStreamWriter& writer) {
            return writer.textDelta(text) + writer.textDelta("!") + writer.ended({});
        });
    }
    static std::string refusing(const char* status, const char* message = "")
    {
        return ScriptedWebServer::answer(status, QByteArray(R"({"error":{"message":")") + message + "\"}}")
            .toStdString();
    }

    std::vector<Answer> answers;
    std::vector<ResponsesRequest> questions;
    ScriptedWebServer server;
};

struct TypedTalk {
    explicit TypedTalk(const ResponsesService& service, LiveModelSettings models = {})
        : talk(service.server.access(), someSetup(), std::move(models))
    {
    }
    bool settles() { return talk.waitFor<live_event::TurnComplete>(); }

    Talk<ResponsesTextConnection> talk;
};

void holdTypedConversation(const std::function<std::string(ResponsesStreamWriter&)>& calling)
{
    ResponsesService service({{ResponsesService::stream(calling)}, {ResponsesService::saying("Kept")}});
    TypedTalk typed(service);
    auto& [observer, source, experience, client] = typed.talk;
    client.sendMessage({.text = "earlier", .answer = LiveMessageText::Answer::notWanted});
    client.sendMessage({.text = "note: milk", .jpeg = Bytes{0xFF, 0xD8}});
    client.sendMessage({.text = "and bread"});
    ASSERT_TRUE(typed.talk.waitFor<live_event::ToolCall>());
    client.sendToolResponse({"call_1", "keep_note", {{"status", "kept"}}}, LiveResponseScheduling::whenIdle);
    client.sendToolResponse({"call_1", "keep_note", {{"status", "again"}}}, LiveResponseScheduling::whenIdle);
    ASSERT_TRUE(typed.settles());
    EXPECT_EQ(observer.written, (std::vector<std::string>{"Kept!"}));
    EXPECT_EQ(observer.all<live_event::BackendIdle>().size(), 1U);
    EXPECT_TRUE(observer.all<live_event::ServerError>().empty());

    ASSERT_EQ(service.questions.size(), 2U);
    EXPECT_EQ(service.questions[0].instructions, "Use tools.");
    EXPECT_EQ(service.questions[0].input.size(), 4U) << "two of history, what was told, what was asked";
    const auto& input = service.questions[1].input;
    ASSERT_EQ(input.size(), 7U);
    EXPECT_EQ(std::get<openai_item::Message>(input[3]).images.size(), 1U);
    EXPECT_EQ(std::get<openai_item::FunctionCall>(input[4]).callID, "call_1");
    EXPECT_EQ(std::get<openai_item::FunctionOutput>(input[5]).output, R"({"status":"kept"})");
    EXPECT_EQ(std::get<openai_item::Message>(input[6]).text, "and bread");
}

TEST_F(OtherClientsTest, aTypedConversationRunsToolsAndRemembers)
{
    const auto call = [](ResponsesStreamWriter& writer) {
        return writer.functionCall({"call_1", "keep_note", R"({"title":"Milk"})"});
    };
    holdTypedConversation([&](ResponsesStreamWriter& writer) { return call(writer) + writer.ended({}); });
    holdTypedConversation(call); // The line is cut behind the call.
}

TEST_F(OtherClientsTest, aTypedQuestionSurvivesWhatPasses)
{
    using Then = ResponsesService::Then;
    const std::string good = ResponsesService::saying("Yes");
    const auto cut = [](ResponsesStreamWriter& writer) { return writer.textDelta("Ye"); };
    const auto nothing = [](ResponsesStreamWriter&) { return std::string(); };
    struct Row {
        const char* name;
        std::vector<ResponsesService::Answer> answers;
        std::vector<std::string> written;
        const char* error; ///< Of the session's ServerError; empty: none.
        int closings;
        std::size_t questions;
    };
    const Row rows[] = {
        {"overloaded twice",
            {{ResponsesService::refusing("503 Busy")}, {ResponsesService::refusing("429 Wait")}, {good}}, {"Yes!"}, "",
            0, 3},
        {"vanishes before a word", {{ResponsesService::stream(nothing)}, {good}}, {"Yes!"}, "", 0, 2},
        {"vanishes within a word", {{ResponsesService::stream(cut)}, {good}}, {"Ye"}, "was lost", 0, 1},
        {"hangs", {{ResponsesService::stream(nothing), Then::stay}, {good}}, {"Yes!"}, "", 0, 2},
        {"overloaded for good", {{ResponsesService::refusing("500 Busy")}}, {}, "a problem of its own (500)", 0, 4},
        {"wrong key", {{ResponsesService::refusing("401 No", "Bad key.")}}, {}, "", 1, 1},
        {"refuses a setting", {{ResponsesService::refusing("400 Bad", "unknown service_tier")}, {good}}, {"Yes!"}, "",
            0, 2},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        ResponsesService service(row.answers);
        LiveModelSettings models;
        models.serviceTier = "priority";
        TypedTalk typed(service, models);
        auto& observer = typed.talk.observer;
        typed.talk.client.sendMessage({.text = "well?"});
        ASSERT_TRUE(
            runUntil([&] { return observer.closings > 0 || !observer.all<live_event::TurnComplete>().empty(); }));
        EXPECT_EQ(observer.written, row.written);
        EXPECT_EQ(service.questions.size(), row.questions);
        EXPECT_EQ(observer.closings, row.closings);
        const auto errors = observer.all<live_event::ServerError>();
        ASSERT_EQ(errors.empty(), *row.error == '\0');
        for (const live_event::ServerError& error : errors)
            EXPECT_NE(error.message.find(row.error), std::string::npos) << error.message;
    }
}

TEST_F(OtherClientsTest, aLongConversationStaysBoundedAndWhole)
{
    ConversationItems items;
    for (int turn = 0; turn < 500; ++turn) {
        items.add(openai_item::Message{"user", std::to_string(turn), {{Bytes(1000)}}});
        items.add(openai_item::FunctionCall{"call", "look_up", "{}"});
        items.add(openai_item::FunctionOutput{"call", std::string(turn % 50 == 0 ? 300'000 : 10, 'x')});
    }
    EXPECT_LE(items.all().size(), ConversationItems::mostItems);
    EXPECT_EQ(std::get<openai_item::Message>(items.all().front()).role, "user") << "no result without its call";
    EXPECT_EQ(std::get<openai_item::Message>(items.all()[items.all().size() - 3]).text, "499");
    std::size_t pictures = 0;
    for (const OpenAIItem& item : items.all())
        if (const auto* message = std::get_if<openai_item::Message>(&item))
            pictures += message->images.size();
    EXPECT_EQ(pictures, ConversationItems::mostPictures);
    items.add(openai_item::Message{"user", std::string(ConversationItems::mostBytes, 'x')});
    EXPECT_EQ(items.all().size(), 1U);
}

} // namespace
} // namespace quorvell
