// SPDX-License-Identifier: MIT
// Catches a session whose model answers in place of the rules, acts without them, or holds the user up.
#include "ServiceClients.h"

#include <QTcpServer>

namespace quorvell::test {

namespace {

/// Speaks the form of a model's server; each request gets the next answer of the test, the last one again and again.
class ModelServer {
public:
    explicit ModelServer(std::vector<std::string> answers)
        : m_answers(std::move(answers))
    {
        needQtApplication();
        m_server.emplace();
        EXPECT_TRUE(m_server->listen(QHostAddress::LocalHost));
        QObject::connect(&*m_server, &QTcpServer::newConnection, &*m_server, [this] {
            QTcpSocket* socket = m_server->nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { read(*socket); });
            QObject::connect(socket, &QTcpSocket::disconnected, &*m_server, [this] { ++closed; });
        });
    }
    ModelAccess access() const
    {
        return {*ModelAccess::addressOf("127.0.0.1:" + std::to_string(m_server->serverPort())), "small"};
    }

    std::vector<Json> bodies;
    int closed = 0;

private:
    void read(QTcpSocket& socket)
    {
        m_received += socket.readAll();
        const qsizetype head = m_received.indexOf("\r\n\r\n");
        const auto body = head < 0 ? std::nullopt : parseJson(m_received.mid(head + 4).toStdString());
        if (!body)
            return;
        EXPECT_TRUE(m_received.startsWith("POST /v1/chat/completions HTTP/1.1\r\n"));
        m_received.clear();
        bodies.push_back(*body);
        socket.write(QByteArray::fromStdString(m_answers[std::min(bodies.size(), m_answers.size()) - 1]));
    }

    std::optional<QTcpServer> m_server;
    QByteArray m_received;
    std::vector<std::string> m_answers;
};

std::string stream(const std::string& events)
{
    return "HTTP/1.1 200 OK\r\nContent-Type: text/event-stream\r\n\r\n" + events;
}

std::string words(const std::string& text)
{
    return "data: {\"choices\":[{\"delta\":{\"content\":\"" + text + "\"}}]}\n\n";
}

std::string call(const std::string& name, const std::string& arguments)
{
    const Json made{{"index", 0}, {"function", {{"name", name}, {"arguments", arguments}}}};
    return "data: " + dumpJson(Json{{"choices", Json::array({{{"delta", {{"tool_calls", Json::array({made})}}}}})}})
        + "\n\n";
}

const std::string done = "data: [DONE]\n\n";
const std::string reminder = stream(call("set_reminder", R"({"text":"tomorrow at 5 pm to eat"})") + done);
/// That no rule understands.
constexpr const char* beyond =
    "[They typed] (your reply is shown as text, not spoken) colourless green ideas sleep furiously";

struct Talk {
    explicit Talk(const std::vector<std::string>& answers)
        : model(answers)
        , server(withModel(model))
        , client(server)
    {
        EXPECT_TRUE(waitFor([this] { return client.isConnected; }));
        OpenAILiveSetupOptions options;
        const Json parameters{
            {"type", "object"}, {"properties", {{"text", {{"type", "string"}}}, {"cancel", {{"type", "boolean"}}}}}};
        options.tools = {{{"type", "function"}, {"name", "set_reminder"}, {"parameters", parameters}}};
        client.send(OpenAILiveMessage::sessionStart(options, OpenAILiveMessage::AudioFormat::declared));
    }
    static LiveServer::Settings withModel(const ModelServer& model)
    {
        auto with = settings();
        with.model = model.access();
        return with;
    }
    bool says(std::string_view text)
    {
        return waitFor([&] { return client.said == text; });
    }

    ModelServer model;
    ListeningServer server;
    Client client;
};

} // namespace

TEST(ModelService, answersWhatTheRulesDoNot)
{
    Talk talk(
        {stream(words("Ideas do not sl") + words("eep. They <think>hm</think>dream. I have set an alarm.") + done)});
    talk.client.type("[They typed] (your reply is shown as text, not spoken) remind me tomorrow at 5 pm to eat");
    EXPECT_TRUE(talk.says(confirmation)) << talk.client.said;
    EXPECT_TRUE(talk.model.bodies.empty()) << "the rules go first";
    talk.client.said.clear();
    talk.client.type(beyond);
    EXPECT_TRUE(talk.says("Ideas do not sleep. They dream. The model on this computer wrote that it did something, but "
                          "nothing was changed."))
        << talk.client.said;
    ASSERT_EQ(talk.model.bodies.size(), 1u);
    const Json& messages = talk.model.bodies[0]["messages"];
    EXPECT_NE(
        dumpJson(messages[0]).find("Saturday the 21st of November 2026, 01:00 (Europe/Berlin)"), std::string::npos)
        << dumpJson(messages[0]);
    EXPECT_EQ(messages.back()["content"], "colourless green ideas sleep furiously");
    EXPECT_EQ(messages[messages.size() - 2]["role"], "assistant") << "each turn once";
    talk.client.said.clear();
    talk.client.type("[They typed] (your reply is shown as text, not spoken) say that again");
    EXPECT_TRUE(waitFor([&] { return talk.client.said.starts_with("Ideas do not sleep."); })) << talk.client.said;
}

TEST(ModelService, actsByTheSameToolsAndTheRulesTellWhatCameOfIt)
{
    Talk talk({reminder, stream(words("I set it for you.") + done)});
    talk.client.type(beyond);
    EXPECT_TRUE(talk.says(confirmation)) << talk.client.said;
    EXPECT_EQ(talk.client.calledWith, R"({"text":"tomorrow at 5 pm to eat"})");
    ASSERT_TRUE(waitFor([&] { return talk.model.bodies.size() == 2; }));
    EXPECT_EQ(talk.model.bodies[1]["messages"].back()["content"], isSet);

    // What takes something away, or was not wished for, is asked about first.
    for (const auto& [answer, words] :
        {std::pair{stream(call("set_reminder", R"({"cancel":true})") + done), beyond},
            std::pair{reminder, "[They typed] (your reply is shown as text, not spoken) what do green ideas dream of?"},
            std::pair{
                reminder, "[They typed] (your reply is shown as text, not spoken) don't plonk green ideas anywhere"}}) {
        Talk careful({answer});
        careful.client.type(words);
        EXPECT_TRUE(waitFor([&] { return careful.client.said.ends_with("?"); })) << careful.client.said;
        EXPECT_EQ(careful.client.calledWith, "");
        careful.client.type("[They typed] (your reply is shown as text, not spoken) yes");
        EXPECT_TRUE(waitFor([&] { return !careful.client.calledWith.empty(); }));
        EXPECT_EQ(careful.model.bodies.size(), 1u);
    }
}

TEST(ModelService, failsTruthfully)
{
    struct Row {
        const char* name;
        std::string answer;
        const char* said;
    };
    const Row rows[] = {
        {"refused", "HTTP/1.1 404 Not Found\r\nContent-Length: 2\r\n\r\nno",
            "The model on this computer did not take the request, so nothing was done."},
        {"sent elsewhere", "HTTP/1.1 302 Found\r\nLocation: http://127.0.0.1:1/\r\nContent-Length: 0\r\n\r\n",
            "The model on this computer did not take the request, so nothing was done."},
        {"no answer", stream("data: hello\n\n"),
            "The model on this computer gave an answer that cannot be used, so nothing was done."},
        {"without end", stream(words("<think>" + std::string(2'200'000, 'a'))),
            "The model on this computer gave an answer that cannot be used, so nothing was done."},
        {"a made-up tool, twice", stream(call("format_disk", "{}") + done),
            "The model on this computer asked for something that cannot be done, so nothing was done."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Talk talk({row.answer});
        talk.client.type(beyond);
        EXPECT_TRUE(talk.says(row.said)) << talk.client.said;
        EXPECT_EQ(talk.client.calledWith, "");
        EXPECT_TRUE(waitFor([&] { return talk.client.types.count("session.usage.updated") > 0; })) << "and goes on";
    }
}

TEST(ModelService, isLeftForWhatTheUserWantsNext)
{
    Talk talk({stream(words("Well. I ")), stream(words("Late.") + done)});
    talk.client.type(beyond);
    EXPECT_TRUE(talk.says("Well.")) << "as it comes";
    talk.client.type("[They typed] (your reply is shown as text, not spoken) remind me tomorrow at 5 pm to eat");
    EXPECT_TRUE(talk.says("Well." + std::string(confirmation))) << talk.client.said;
    EXPECT_TRUE(waitFor([&] { return talk.model.closed == 1; })) << "and is told so";
}

TEST(ModelService, speaksSentencesOfOneReply)
{
    Talk talk({stream(words("One. Two. Three.") + done)});
    talk.client.type("[They typed] colourless green ideas sleep furiously");
    EXPECT_TRUE(talk.says("One. Two. Three.")) << talk.client.said;
    EXPECT_TRUE(waitFor([&] { return talk.client.soundBytes > 0 && talk.client.got("session.usage.updated"); }));
}

} // namespace quorvell::test
