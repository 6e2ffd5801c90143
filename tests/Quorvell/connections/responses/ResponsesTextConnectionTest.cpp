// SPDX-License-Identifier: MIT
// Catches typed conversations that lose an answer or hang on a failing service.
#include "Quorvell/connections/responses/ResponsesTextConnection.h"

#include "ClientTalk.h"
#include "QuorvellCore/live/wire/responses/ResponsesRequestReader.h"
#include "QuorvellCore/live/wire/responses/ResponsesStreamWriter.h"
#include "ScriptedServices.h"

#include <gtest/gtest.h>

namespace quorvell {
namespace {

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

    ClientTalk<ResponsesTextConnection> talk;
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

class ResponsesTextConnectionTest : public testing::Test {
protected:
    void SetUp() override { needQtApplication(); }
};

TEST_F(ResponsesTextConnectionTest, aTypedConversationRunsToolsAndRemembers)
{
    const auto call = [](ResponsesStreamWriter& writer) {
        return writer.functionCall({"call_1", "keep_note", R"({"title":"Milk"})"});
    };
    holdTypedConversation([&](ResponsesStreamWriter& writer) { return call(writer) + writer.ended({}); });
    holdTypedConversation(call); // The line is cut behind the call.
}

TEST_F(ResponsesTextConnectionTest, aTypedQuestionSurvivesWhatPasses)
{
    using Then = ResponsesService::Then;
    const std::string good = ResponsesService::saying("Yes");
    const auto cut = [](ResponsesStreamWriter& writer) { return writer.textDelta("Ye"); };
    const auto nothing = [](ResponsesStreamWriter&) { return std::string(); };
    const auto stopped = [](ResponsesStreamWriter& writer) {
        OpenAIResponseEnd end;
        end.status = OpenAIResponseEnd::Status::incomplete;
        end.detail = "max_output_tokens";
        return writer.ended(end);
    };
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
        {"stops before a word", {{ResponsesService::stream(stopped)}}, {}, "stopped before it answered", 0, 1},
        {"overloaded for good", {{ResponsesService::refusing("500 Busy")}}, {}, "a problem of its own (500)", 0, 4},
        {"wrong key", {{ResponsesService::refusing("401 No", "Bad key.")}}, {}, "", 1, 1},
        {"refuses a setting", {{ResponsesService::refusing("400 Bad", "unknown service_tier")}, {good}}, {"Yes!"}, "",
            0, 2},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        ResponsesService service(row.answers);
        LiveModelSettings models;
        models.options.serviceTier = "priority";
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

} // namespace
} // namespace quorvell
