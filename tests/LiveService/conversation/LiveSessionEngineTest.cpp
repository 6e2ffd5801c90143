// SPDX-License-Identifier: MIT
// Catches a service session that answers out of turn, twice, or never, whatever its client sends.
#include "LiveService/conversation/LiveSessionEngine.h"

#include "LiveService/protocols/OpenAICodec.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveClientParser.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveMessage.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveServerMessage.h"
#include "QuorvellCore/live/wire/openai/OpenAIResponseEvent.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <tuple>

namespace quorvell {

namespace {

using std::chrono::milliseconds;

/// Effects as texts: frames as they go over the wire, the rest by name.
struct Shown {
    std::string operator()(const effect::Tell& tell) const
    {
        if (std::holds_alternative<news::Interrupted>(tell.news))
            return "interrupted";
        if (std::holds_alternative<news::Generated>(tell.news))
            return "generated";
        return std::holds_alternative<news::TurnOver>(tell.news) ? "turn over" : std::string();
    }
    std::string operator()(const effect::PrepareSpeech& prepare) const
    {
        return "prepare " + std::to_string(prepare.heardRateHz) + " " + prepare.voice;
    }
    std::string operator()(const effect::ExpectSpeech&) const { return "expect"; }
    std::string operator()(const effect::BeginListening&) const { return "begin"; }
    std::string operator()(const effect::Listen&) const { return "listen"; }
    std::string operator()(const effect::FinishListening&) const { return "finish"; }
    std::string operator()(const effect::ThinkAboutWords& think) const { return "think " + think.words; }
    std::string operator()(const effect::ThinkAboutResult& think) const
    {
        return "think " + think.call.name + " " + think.result;
    }
    std::string operator()(const effect::Voice& voice) const
    {
        std::string text = "voice " + std::to_string(voice.reply);
        for (const std::string& sentence : voice.sentences)
            text += " <" + sentence + ">";
        return text;
    }
    std::string operator()(const effect::StopVoice&) const { return "stop"; }
    std::string operator()(const effect::CloseConnection& close) const
    {
        return "close " + std::to_string(close.code) + " " + close.reason;
    }
};

using Texts = std::vector<std::string>;

Texts shown(const EngineEffects& effects)
{
    Texts texts;
    OpenAICodec codec(OpenAICodec::Sound::inTexts);
    for (const EngineEffect& effect : effects) {
        const auto* tell = std::get_if<effect::Tell>(&effect);
        const Texts told = tell ? codec.write(tell->news).texts : Texts();
        texts.insert(texts.end(), told.begin(), told.end());
        if (std::string text = std::visit(Shown(), effect); !text.empty())
            texts.push_back(std::move(text));
    }
    return texts;
}

std::string inResponse(Json event)
{
    return dumpJson(OpenAILiveServerMessage::responseEvent(std::move(event)));
}

std::string created(const char* id)
{
    return inResponse(OpenAIResponseEvent::created(id));
}

std::string completed(const char* id, int read, int written)
{
    const openai_event::BackendUsage usage{read, 0, written};
    return inResponse(OpenAIResponseEvent::ended({id, OpenAIResponseEnd::Status::completed, usage, "default"}));
}

std::string textDone(const char* text)
{
    return inResponse(OpenAIResponseEvent::textDone(text));
}

std::string error(const char* code, const char* message, std::optional<std::string> id = {})
{
    return dumpJson(OpenAILiveServerMessage::error({"invalid_request_error", code, message, std::move(id)}));
}

/// A session whose rules and voice are played by the test. Ids count up.
class Conversation {
public:
    Conversation()
        : m_engine(
            [count = 0](std::string_view prefix) mutable { return std::string(prefix) + std::to_string(++count); },
            milliseconds(0))
    {
    }

    Texts receive(std::string_view frame) { return shown(m_engine.receive(OpenAILiveClientParser::parse(frame), now)); }
    Texts send(const Json& message) { return receive(dumpJson(message)); }
    Texts start()
    {
        OpenAILiveSetupOptions options;
        options.voice = "slt";
        options.tools = {{{"type", "function"}, {"name", "set_reminder"}}};
        options.history = {{"user", "hello"}, {"assistant", "Hello."}};
        return send(OpenAILiveMessage::sessionStart(options, OpenAILiveMessage::AudioFormat::declared));
    }
    Texts think(std::variant<ToolRequest, std::string> answer)
    {
        return shown(m_engine.thought({std::move(answer), {}}, now));
    }
    Texts hear(const HeardTurn& turn) { return shown(m_engine.heard(turn, now)); }
    /// Sound of one loudness, sent in real time; what happened besides listening.
    Texts sendSound(int level, milliseconds length)
    {
        Texts texts;
        for (milliseconds sent{}; sent < length; sent += milliseconds(40)) {
            now += milliseconds(40);
            Bytes chunk;
            for (int sample = 0; sample < 960; ++sample)
                chunk.insert(chunk.end(), {0, static_cast<std::uint8_t>(sample % 2 == 0 ? level : -level)});
            for (std::string& text : send(OpenAILiveMessage::audio(chunk)))
                if (text != "listen")
                    texts.push_back(std::move(text));
        }
        return texts;
    }
    Texts voice(VoicePiece piece) { return shown(m_engine.voiced(std::move(piece), now)); }
    Texts tick() { return shown(m_engine.tick(now)); }
    LiveSessionEngine& engine() { return m_engine; }

    milliseconds now{};

private:
    LiveSessionEngine m_engine;
};

struct StartedConversation : Conversation {
    StartedConversation() { start(); }
};

Json typed(const char* text)
{
    return OpenAILiveMessage::backendMessage(
        std::string("[They typed] (your reply is shown as text, not spoken) ") + text);
}

} // namespace

TEST(LiveSessionEngine, walksThroughATypedReminder)
{
    Conversation talk;
    EXPECT_EQ(talk.start(), (Texts{"prepare 24000 slt", R"({"type":"session.started","session":{"id":"sess_1"}})"}));
    EXPECT_EQ(talk.send(typed("remind me")), Texts());
    EXPECT_EQ(talk.send(OpenAILiveMessage::responseCreate("create_1")), (Texts{created("resp_2"), "think remind me"}));
    EXPECT_EQ(talk.send(OpenAILiveMessage::responseCreate("create_2")),
        (Texts{error("response_in_progress", "A response is running. Wait until it has ended.", "create_2")}));
    EXPECT_EQ(talk.think(ToolRequest{"set_reminder", R"({"text":"x"})"}),
        (Texts{inResponse(OpenAIResponseEvent::functionCallAdded({"call_3", "set_reminder", R"({"text":"x"})", false})),
            inResponse(OpenAIResponseEvent::functionCallDone({"call_3", "set_reminder", R"({"text":"x"})", false})),
            completed("resp_2", 2, 1)}));
    EXPECT_EQ(talk.send(OpenAILiveMessage::responseCreate("create_3")),
        (Texts{error("function_call_output_missing", "Send the results of the function calls first.", "create_3")}));
    EXPECT_EQ(talk.send(OpenAILiveMessage::functionOutput("call_9", "{}").front()),
        (Texts{error("unknown_call_id", R"(No result is owed for this "call_id".)")}));
    EXPECT_EQ(talk.send(OpenAILiveMessage::functionOutput("call_3", R"({"status":"set"})").front()), Texts());
    EXPECT_EQ(talk.send(OpenAILiveMessage::responseCreate()),
        (Texts{created("resp_4"), R"(think set_reminder {"status":"set"})"}));
    EXPECT_EQ(talk.think(std::string("Done so.")),
        (Texts{textDone("Done so."), R"({"type":"session.output_transcript.delta","delta":"Done so."})",
            R"({"type":"session.usage.updated","usage":{"seconds":0.0},"context_window":{"usage_ratio":0.03125}})",
            completed("resp_4", 1, 2), "generated", "turn over"}));
    EXPECT_EQ(talk.send(OpenAILiveMessage::close()),
        (Texts{R"({"type":"session.closed","reason":"client_requested"})", "close 1000 client_requested"}));
    EXPECT_EQ(talk.send(typed("more")), Texts()) << "nothing follows the end";
}

TEST(LiveSessionEngine, walksThroughASpokenTurn)
{
    StartedConversation talk;
    EXPECT_EQ(talk.sendSound(0, milliseconds(600)), Texts{"expect"});
    EXPECT_EQ(talk.sendSound(40, milliseconds(1000)), Texts{"begin"});
    talk.now = *talk.engine().nextTick();
    EXPECT_EQ(talk.tick(), (Texts{"listen", "finish"}));
    EXPECT_EQ(talk.hear({.text = "remind me"}),
        (Texts{R"({"type":"session.input_transcript.delta","delta":"remind me"})",
            R"({"type":"session.delegation.created","delegation":{"id":"deleg_2"}})", created("resp_3"),
            "think remind me"}));
    EXPECT_EQ(talk.think(std::string("When? Say when.")),
        (Texts{textDone("When? Say when."), "voice 1 <When?> <Say when.>", completed("resp_3", 2, 3)}));

    talk.voice({.reply = 1, .kind = VoicePiece::Kind::sentenceBegan, .sentence = "When?"});
    const auto first = talk.voice({.reply = 1, .samples = std::vector<std::int16_t>(960, 0x0102)});
    ASSERT_EQ(first.size(), 2u) << "the first sound goes out at once";
    EXPECT_EQ(first[0], R"({"type":"session.output_transcript.delta","delta":"When?"})");
    EXPECT_TRUE(first[1].starts_with(R"({"type":"session.output_audio.delta","delta":"AgECAQIB)"))
        << first[1].substr(0, 80);
    talk.voice({.reply = 1, .kind = VoicePiece::Kind::sentenceEnded});
    EXPECT_EQ(talk.voice({.reply = 1, .kind = VoicePiece::Kind::replyEnded}),
        (Texts{R"({"type":"session.usage.updated","usage":{"seconds":1.64},"context_window":{"usage_ratio":0.03125}})",
            "generated", "turn over"}));
    EXPECT_EQ(talk.engine().state().history.lastReply(), "When?") << "only that was spoken";
}

TEST(LiveSessionEngine, stopsSpeakingWhenTheUserBegins)
{
    StartedConversation talk;
    EXPECT_EQ(talk.send(OpenAILiveMessage::instructions("Sam has just called Quorvell over and is looking at a page. "
                                                        "Say hello warmly and ask what they'd like to do.")),
        Texts{"voice 1 <Hello Sam.> <What can I do for you?>"});
    talk.voice({.reply = 1, .kind = VoicePiece::Kind::sentenceBegan, .sentence = "Hello Sam."});
    EXPECT_EQ(talk.voice({.reply = 1, .samples = std::vector<std::int16_t>(24000)}).size(), 1u + 5u) << "200 ms ahead";
    EXPECT_EQ(talk.sendSound(40, milliseconds(80)),
        (Texts{"expect", "stop", "interrupted",
            R"({"type":"session.usage.updated","usage":{"seconds":0.28},"context_window":{"usage_ratio":0.0234375}})",
            "begin", "turn over"}));
    EXPECT_EQ(talk.voice({.reply = 1, .samples = std::vector<std::int16_t>(24000)}), Texts())
        << "it is not wanted any more";
    EXPECT_EQ(talk.tick(), Texts());
}

TEST(LiveSessionEngine, boundsWhatWaitsForTheVoiceAndTheRecogniser)
{
    StartedConversation talk;
    const std::string sentence(3000, 'a');
    const auto say = OpenAILiveMessage::instructions("[Quorvell app event] Tell them: “" + sentence + "”.");
    int voiced = 0;
    for (int count = 0; count < 100; ++count)
        voiced += talk.send(say).front().starts_with("voice") ? 1 : 0;
    EXPECT_EQ(voiced, static_cast<int>(LiveSessionEngine::longestUnsaid / sentence.size()));
    for (int reply = 1; reply <= voiced; ++reply)
        talk.voice({.reply = reply, .kind = VoicePiece::Kind::replyEnded});
    EXPECT_TRUE(talk.send(say).front().starts_with("voice")) << "and then again";

    StartedConversation loud;
    Texts texts;
    for (std::size_t turn = 0; turn <= LiveSessionEngine::mostTurnsUnrecognised && texts.empty(); ++turn) {
        for (const std::string& text : loud.sendSound(40, milliseconds(400)))
            if (text.starts_with("close"))
                texts.push_back(text);
        loud.engine().soundPaused();
    }
    EXPECT_EQ(texts, Texts{"close 1008 too_much_sound"});
}

TEST(LiveSessionEngine, carriesOutInstructions)
{
    const std::pair<const char*, Texts> rows[] = {
        {"[Quorvell app event] They have to leave. Tell them: “It is five o'clock.” Be brief.",
            {"voice 1 <It is five o'clock.>"}},
        {"[Quorvell app event] They just said: “help me”. (Quorvell was resting while it was quiet, ...)",
            {R"({"type":"session.delegation.created","delegation":{"id":"deleg_2"}})", created("resp_3"),
                "think help me"}},
        {"Speak slowly.", {}},
    };
    for (const auto& [instructions, expected] : rows) {
        StartedConversation talk;
        EXPECT_EQ(talk.send(OpenAILiveMessage::instructions(instructions)), expected) << instructions;
    }
}

TEST(LiveSessionEngine, goesOnFromAnotherSession)
{
    StartedConversation first;
    first.send(typed("one"));
    first.send(OpenAILiveMessage::responseCreate());
    first.think(std::string("First."));
    Conversation second;
    second.engine().resume(first.engine().state());
    second.start();
    EXPECT_EQ(second.engine().state().history.lastReply(), "First.");
    EXPECT_EQ(second.engine().state().totalWords, 2);
}

TEST(LiveSessionEngine, answersATurnWithoutWordsPlainly)
{
    const std::tuple<const char*, milliseconds, HeardTurn, Texts> rows[] = {
        {"speech that was not understood", milliseconds(800), {}, {"voice 1 <Sorry, I could not understand that.>"}},
        {"a noise", milliseconds(120), {}, {}},
        {"no models", milliseconds(120), {.problem = "I cannot hear."}, {"voice 1 <I cannot hear.>"}},
    };
    for (const auto& [name, speech, turn, expected] : rows) {
        SCOPED_TRACE(name);
        StartedConversation talk;
        talk.sendSound(40, speech);
        talk.sendSound(0, milliseconds(800));
        EXPECT_EQ(talk.hear(turn), expected);
    }
}

TEST(LiveSessionEngine, answersEverythingThatWaitsInOneResponse)
{
    StartedConversation talk;
    talk.send(typed("one"));
    talk.send(OpenAILiveMessage::backendMessage("[Quorvell app event] The page changed."));
    talk.send(OpenAILiveMessage::backendMessage("[They typed] two"));
    talk.send(
        OpenAILiveMessage::backendMessage("[Quorvell app event] They said: “three”. It wasn't passed on to you."));
    EXPECT_EQ(talk.send(OpenAILiveMessage::responseCreate()), (Texts{created("resp_2"), "think one"}));
    EXPECT_EQ(talk.think(std::string("First.")), Texts{"think two"});
    const auto called = talk.think(ToolRequest{"set_reminder", R"({"text":"x"})"});
    ASSERT_EQ(called.size(), 6u);
    EXPECT_EQ(called[0], textDone("First.")) << "what was settled is said before the call";
    EXPECT_EQ(called[1], R"({"type":"session.output_transcript.delta","delta":"First."})");
    talk.send(OpenAILiveMessage::functionOutput("call_3", "{}").front());
    EXPECT_EQ(talk.send(OpenAILiveMessage::responseCreate()), (Texts{created("resp_4"), "think set_reminder {}"}));
    EXPECT_EQ(talk.think(std::string("Second.")), Texts{"think three"});
    EXPECT_EQ(talk.think(std::string("Third.")),
        (Texts{textDone("Second. Third."), "voice 1 <Second.> <Third.>", completed("resp_4", 2, 2)}));
    EXPECT_EQ(talk.send(OpenAILiveMessage::responseCreate()), (Texts{created("resp_5"), completed("resp_5", 0, 0)}));
}

TEST(ClientText, whatAnEarlierConnectionSawToIsNotCarriedOutAgain)
{
    using Kind = ClientText::Kind;
    const std::string renewed =
        "[Quorvell app event] They said: “remind me”. The connection was renewed before that was finished. ";
    const std::pair<std::string, ClientText> rows[] = {
        {"[Quorvell app event] They said: “remind me”. It wasn't passed on to you.", {.text = "remind me"}},
        {renewed + R"(set_reminder {"text":"x"} answered {"status":"set"}. Don't run any of this again.)",
            {.kind = Kind::words, .text = "That is done."}},
        {renewed + R"(set_reminder {} answered {"status":"set"}. keep_note {} answered {"error":"No disk."}. Don't.)",
            {.kind = Kind::words, .text = "That did not work. Please ask again."}},
        {renewed + "set_reminder {} is still running; its result will follow. ", {.kind = Kind::nothing}},
        {renewed + "Of your answer they heard: “I will”. ", {.kind = Kind::words, .text = "Is there anything else?"}},
        {R"([Quorvell app event] A call from before the connection was renewed has finished: x {} answered {"a":1}. )",
            {.kind = Kind::words, .text = "That is done."}},
    };
    for (const auto& [message, expected] : rows)
        EXPECT_EQ(ClientText::fromMessage(message), expected) << message;
}

TEST(LiveSessionEngine, goesOnWhenAResultNeverComes)
{
    StartedConversation talk;
    talk.send(typed("one"));
    talk.send(OpenAILiveMessage::responseCreate());
    talk.think(ToolRequest{"set_reminder", "{}"});
    talk.sendSound(40, milliseconds(400));
    talk.sendSound(0, milliseconds(800));
    EXPECT_EQ(talk.hear({.text = "two"}).size(), 2u) << "waits for the result";
    talk.now += BackendRun::patience;
    talk.sendSound(40, milliseconds(400));
    talk.sendSound(0, milliseconds(800));
    const auto texts = talk.hear({.text = "three"});
    EXPECT_EQ(texts.back(), "think two");
    EXPECT_EQ(talk.send(OpenAILiveMessage::functionOutput("call_3").front()).size(), 1u) << "too late";
}

TEST(LiveSessionEngine, refusesWhatItCannotTake)
{
    const std::tuple<const char*, const char*, bool, std::string> rows[] = {
        {"no JSON", "hello", true, error("invalid_json", "The message is no JSON object, or is too large.")},
        {"unknown type", R"({"type":"dance","event_id":"e1"})", true,
            error("unknown_type", R"(There is no message of this "type".)", "e1")},
        {"no samples", R"({"type":"session.input_audio.append","audio":"AAA="})", false,
            error("session_not_started", R"(Send "session.start" first.)")},
        {"half a sample", R"({"type":"session.input_audio.append","audio":"AA=="})", true,
            error("invalid_value", R"("audio" is no base64 of whole 16-bit samples.)")},
        {"too early", R"({"type":"response.create"})", false,
            error("session_not_started", R"(Send "session.start" first.)")},
    };
    for (const auto& [name, frame, started, expected] : rows) {
        SCOPED_TRACE(name);
        Conversation talk;
        if (started)
            talk.start();
        EXPECT_EQ(talk.receive(frame), Texts{expected});
        EXPECT_EQ(talk.start().empty(), false);
    }
    StartedConversation talk;
    EXPECT_EQ(talk.start(),
        (Texts{error("session_already_started", "This session has started. Open another connection for another one.",
            "start")}));
    for (int count = 1; count < LiveSessionEngine::mostErrorsInARow; ++count)
        EXPECT_EQ(talk.receive("nonsense").size(), 1u);
    EXPECT_EQ(talk.receive("nonsense").back(), "close 1008 too_many_errors");
    StartedConversation full;
    for (std::size_t count = 0; count < BackendRun::mostWaiting; ++count)
        EXPECT_EQ(full.send(typed("x")), Texts());
    EXPECT_EQ(full.send(typed("x")),
        Texts{error("too_many_messages", R"(Too many messages wait. Send "response.create" first.)")});
}

TEST(LiveSessionEngine, endsWhatNeverStartsAndWhatTheServiceEnds)
{
    Conversation never;
    EXPECT_EQ(never.engine().nextTick(), LiveSessionEngine::startPatience);
    never.now = LiveSessionEngine::startPatience;
    EXPECT_EQ(
        never.tick(), (Texts{R"({"type":"session.closed","reason":"start_timeout"})", "close 1008 start_timeout"}));
    EXPECT_FALSE(never.engine().nextTick());

    StartedConversation talk;
    EXPECT_EQ(shown(talk.engine().end("server_shutdown", 1001)),
        (Texts{R"({"type":"session.closed","reason":"server_shutdown"})", "close 1001 server_shutdown"}));
    EXPECT_EQ(shown(talk.engine().end("server_shutdown", 1001)), Texts());
}

} // namespace quorvell
