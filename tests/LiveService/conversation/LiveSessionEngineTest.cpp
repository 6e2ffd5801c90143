// SPDX-License-Identifier: MIT
// Catches a service session that answers out of turn, twice, or never, whatever its client sends.
#include "LiveService/conversation/LiveSessionEngine.h"

#include "FixtureTable.h"
#include "LiveService/protocols/OpenAICodec.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveClientParser.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveMessage.h"

#include <nlohmann/json.hpp>

#include <map>

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
    std::string operator()(const effect::JudgePause& judge) const { return "judge " + std::to_string(judge.pause); }
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
    std::string operator()(const effect::AskModel& ask) const
    {
        return "ask " + dumpJson(parseJson(ask.body)->at("messages").back());
    }
    std::string operator()(const effect::StopModel&) const { return "stop model"; }
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

/// A session whose rules and voice are played by the test, one line at a time. Ids count up.
class Conversation {
public:
    Conversation() { begin(); }

    Texts play(const std::string& line)
    {
        const auto [first, rest] = test::verbAndRest(line);
        const auto verb = verbs.find(first);
        return verb == verbs.end() ? Texts{"?"} : verb->second(*this, rest);
    }
    Texts receive(std::string_view frame)
    {
        return shown(m_engine->receive(OpenAILiveClientParser::parse(frame), m_now));
    }
    Texts send(const Json& message) { return receive(dumpJson(message)); }
    /// Sound of one loudness, sent in real time; what happened besides listening.
    Texts sendSound(int level, milliseconds length)
    {
        Texts texts;
        for (milliseconds sent{}; sent < length; sent += milliseconds(40)) {
            m_now += milliseconds(40);
            Bytes chunk;
            for (int sample = 0; sample < 960; ++sample)
                chunk.insert(chunk.end(), {0, static_cast<std::uint8_t>(sample % 2 == 0 ? level : -level)});
            for (std::string& text : send(OpenAILiveMessage::audio(chunk))) {
                if (text.starts_with("judge "))
                    judge(std::stoi(text.substr(6)), texts);
                else if (text != "listen")
                    texts.push_back(std::move(text));
            }
        }
        return texts;
    }
    /// What is said from now on is of that shape; nobody can tell at first.
    void saying(UtteranceShape shape) { m_shape = shape; }
    Texts voice(VoicePiece piece) { return shown(m_engine->voiced(std::move(piece), m_now)); }
    LiveSessionEngine& engine() { return *m_engine; }

private:
    void judge(int pause, Texts& texts)
    {
        for (std::string& text : shown(m_engine->judged(pause, m_shape)))
            texts.push_back(std::move(text));
    }
    using Verb = Texts (*)(Conversation&, const std::string&);
    static const std::map<std::string, Verb> verbs;

    void begin()
    {
        m_engine.emplace(
            [count = 0](std::string_view prefix) mutable { return std::string(prefix) + std::to_string(++count); },
            m_now);
    }
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
        return shown(m_engine->thought({std::move(answer), {}}, m_now));
    }
    Texts puzzled() { return shown(m_engine->thought({std::string("I can set reminders."), {}, true}, m_now)); }
    Texts tick() { return shown(m_engine->tick(m_now)); }

    milliseconds m_now{};
    std::optional<UtteranceShape> m_shape;
    int m_reply = 1; ///< That is being voiced.
    std::optional<LiveSessionEngine> m_engine;
};

using Message = OpenAILiveMessage;
using Text = const std::string&;
using Talk = Conversation&;

/// What the client, the rules, the voice and the clock do.
const std::map<std::string, Conversation::Verb> Conversation::verbs{
    {"start", [](Talk talk, Text) { return talk.start(); }},
    {"frame", [](Talk talk, Text text) { return talk.receive(text); }},
    {"message", [](Talk talk, Text text) { return talk.send(Message::backendMessage(text)); }},
    {"instructions", [](Talk talk, Text text) { return talk.send(Message::instructions(text)); }},
    {"create", [](Talk talk, Text id) { return talk.send(Message::responseCreate(id)); }},
    {"output",
        [](Talk talk, Text text) {
            const auto [call, result] = test::verbAndRest(text);
            return talk.send(Message::functionOutput(call, result).front());
        }},
    {"leave", [](Talk talk, Text) { return talk.send(Message::close()); }},
    {"silence", [](Talk talk, Text length) { return talk.sendSound(0, milliseconds(std::stoi(length))); }},
    {"whole",
        [](Talk talk, Text) {
            talk.saying(UtteranceShape::whole);
            return Texts();
        }},
    {"speech", [](Talk talk, Text length) { return talk.sendSound(40, milliseconds(std::stoi(length))); }},
    {"heard", [](Talk talk, Text text) { return shown(talk.m_engine->heard({.text = text}, talk.m_now)); }},
    {"unheard", [](Talk talk, Text text) { return shown(talk.m_engine->heard({.problem = text}, talk.m_now)); }},
    {"answer", [](Talk talk, Text text) { return talk.think(text); }},
    {"call",
        [](Talk talk, Text text) {
            return talk.think(ToolRequest{"set_reminder", text});
        }},
    {"model",
        [](Talk talk, Text) {
            talk.m_engine->useModel({{*ModelAccess::addressOf("localhost:8080"), "small"}, [] { return "today"; }});
            return Texts();
        }},
    {"puzzled", [](Talk talk, Text) { return talk.puzzled(); }},
    {"writes",
        [](Talk talk, Text text) {
            const Json delta{{"choices", Json::array({{{"delta", {{"content", text + " "}}}}})}};
            return shown(talk.m_engine->modelSent("data: " + dumpJson(delta) + "\n\n", talk.m_now));
        }},
    {"written", [](Talk talk, Text) { return shown(talk.m_engine->modelSent("data: [DONE]\n\n", talk.m_now)); }},
    {"sentence",
        [](Talk talk, Text text) {
            return talk.voice({.reply = talk.m_reply, .kind = VoicePiece::Kind::sentenceBegan, .sentence = text});
        }},
    {"sound",
        [](Talk talk, Text samples) {
            return talk.voice(
                {.reply = talk.m_reply, .samples = std::vector<std::int16_t>(std::stoul(samples), 0x0102)});
        }},
    {"sentenceEnd",
        [](Talk talk, Text) { return talk.voice({.reply = talk.m_reply, .kind = VoicePiece::Kind::sentenceEnded}); }},
    {"reply",
        [](Talk talk, Text number) {
            talk.m_reply = std::stoi(number);
            return Texts();
        }},
    {"replyEnd",
        [](Talk talk, Text) { return talk.voice({.reply = talk.m_reply, .kind = VoicePiece::Kind::replyEnded}); }},
    {"wait",
        [](Talk talk, Text length) {
            talk.m_now += milliseconds(std::stoi(length));
            return talk.tick();
        }},
    {"next",
        [](Talk talk, Text) {
            const auto next = talk.m_engine->nextTick();
            if (!next)
                return Texts{"never"};
            const std::string waited = std::to_string((*next - talk.m_now).count());
            talk.m_now = *next;
            Texts texts = talk.tick();
            texts.insert(texts.begin(), "after " + waited + " ms");
            return texts;
        }},
    {"resume",
        [](Talk talk, Text) {
            const auto state = talk.m_engine->state();
            talk.begin();
            talk.m_engine->resume(state);
            return Texts();
        }},
    {"state",
        [](Talk talk, Text) {
            const auto state = talk.m_engine->state();
            return Texts{std::to_string(state.totalWords) + " words, the last reply: " + state.history.lastReply()};
        }},
    {"end", [](Talk talk, Text reason) { return shown(talk.m_engine->end(reason, 1001)); }},
};

constexpr std::size_t longestShown = 300; ///< Of sound, only how it begins.

} // namespace

TEST(LiveSessionEngine, walksThroughConversations)
{
    test::playFixture("live_service/conversations.txt", [] {
        return [talk = std::make_unique<Conversation>()](const std::string& line) {
            Texts texts = talk->play(line);
            for (std::string& text : texts)
                if (text.size() > longestShown)
                    text = text.substr(0, 76) + "...";
            return texts;
        };
    });
}

TEST(LiveSessionEngine, boundsWhatWaits)
{
    const std::string sentence(3000, 'a');
    const std::string say = "instructions [Quorvell app event] Tell them: “" + sentence + "”.";
    Conversation talk;
    talk.play("start");
    int voiced = 0;
    for (int count = 0; count < 100; ++count)
        voiced += talk.play(say).front().starts_with("voice") ? 1 : 0;
    EXPECT_EQ(voiced, static_cast<int>(LiveSessionEngine::longestUnsaid / sentence.size()));
    for (int reply = 1; reply <= voiced; ++reply)
        talk.voice({.reply = reply, .kind = VoicePiece::Kind::replyEnded});
    EXPECT_TRUE(talk.play(say).front().starts_with("voice")) << "and then again";

    Conversation loud;
    loud.play("start");
    Texts texts;
    for (std::size_t turn = 0; turn <= LiveSessionEngine::mostTurnsUnrecognised && texts.empty(); ++turn) {
        for (const std::string& text : loud.sendSound(40, milliseconds(400)))
            if (text.starts_with("close"))
                texts.push_back(text);
        loud.engine().soundPaused();
    }
    EXPECT_EQ(texts, Texts{"close 1008 too_much_sound"});

    Conversation wrong;
    wrong.play("start");
    for (int count = 1; count < LiveSessionEngine::mostErrorsInARow; ++count)
        EXPECT_EQ(wrong.play("frame nonsense").size(), 1u);
    EXPECT_EQ(wrong.play("frame nonsense").back(), "close 1008 too_many_errors");

    Conversation full;
    full.play("start");
    for (std::size_t count = 0; count < BackendRun::mostWaiting; ++count)
        EXPECT_EQ(full.play("message x"), Texts());
    const Texts refused = full.play("message x");
    ASSERT_EQ(refused.size(), 1u);
    EXPECT_NE(refused[0].find("too_many_messages"), std::string::npos);
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

} // namespace quorvell
