// SPDX-License-Identifier: MIT
// Catches a planner that is asked in the wrong form, too often or too long, and failures that are told wrongly.
#include "Quorvell/deciders/Deciders.h"
#include "Quorvell/preferences/PlannerTraits.h"
#include "Screens.h"
#include "ScriptedHTTPServer.h"

#include <gtest/gtest.h>

#include <atomic>

namespace quorvell {
namespace {

using namespace std::chrono_literals;
using Kind = DecisionError::Kind;
using Server = test::ScriptedHTTPServer;
using Service = PlannerService;

std::string pressing(const std::string& id)
{
    return R"({"kind": "action", "message": "I'll open it.", "action": {"tool": "click", "target": ")" + id
        + R"("}, "expected": {"kind": "changed", "value": ""}})";
}

Server::Reply decided(const std::string& decision)
{
    const Json part = {{"type", "output_text"}, {"text", decision}};
    const Json message = {{"type", "message"}, {"content", Json::array({part})}};
    return Server::answer(200, dumpJson({{"output", Json::array({message})}}));
}

PlannerAnswer planned(const Server& server, Service service, std::stop_token stop = {})
{
    const DeciderChoice choice =
        DeciderChoice::of({.planner = service, .plannerModel = "a-model", .plannerHost = server.url()},
            {{}, {{service, "sk-a-key-for-tests"}}});
    return Deciders::create(choice, {}, {})
        .planner({"show me how it looks", test::screenWith({test::element("AXButton", "Appearance")})}, stop);
}

TEST(PlannerClient, asksEachServiceInItsForm)
{
    struct Row {
        Service service;
        const char* head;
        const char* key;
        std::string reply;
    };
    const Row rows[] = {
        {Service::openAI, "POST /v1/responses ", "Authorization: Bearer sk-a-key-for-tests\r\n",
            decided(pressing("Appearance")).bytes},
        {Service::anthropic, "POST /v1/messages ", "x-api-key: sk-a-key-for-tests\r\n",
            Server::answer(200, R"({"content": [{"type": "tool_use", "input": )" + pressing("Appearance") + "}]}")
                .bytes},
        {Service::openRouter, "POST /v1/chat/completions ", "Authorization: Bearer sk-a-key-for-tests\r\n",
            Server::answer(
                200, dumpJson({{"choices", Json::array({{{"message", {{"content", pressing("Appearance")}}}}})}}))
                .bytes},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.head);
        Server server([&row](const std::string&) { return Server::Reply{row.reply}; });
        const PlannerAnswer answer = planned(server, row.service);
        ASSERT_TRUE(std::holds_alternative<AutomationDecision>(answer)) << std::get<DecisionError>(answer).message;
        EXPECT_EQ(std::get<AutomationDecision>(answer).action.value().target, "Appearance");
        ASSERT_EQ(server.requests().size(), 1U);
        const std::string sent = server.requests()[0];
        EXPECT_EQ(sent.find(row.head), 0U);
        for (const char* part : {row.key, "\"model\":\"a-model\"", "Appearance"})
            EXPECT_NE(sent.find(part), std::string::npos) << part;
    }
}

TEST(PlannerClient, triesAgainOnlyWhatIsWorthIt)
{
    const Server::Reply right = decided(pressing("Appearance"));
    const Server::Reply busy = Server::answer(429, "", "Retry-After: 1\r\n");
    struct Row {
        const char* name;
        std::vector<Server::Reply> replies; ///< The last one for all that follow, too.
        std::size_t requests;
        std::optional<Kind> kind{}; ///< None: there is a decision.
        const char* says = "";
    };
    const Row rows[] = {
        {"no step, then one", {decided("{\"kind\": \"dance\"}"), right}, 2},
        {"no step on this screen, twice", {decided(pressing("Elsewhere"))}, 2, Kind::malformed,
            "OpenAI answered twice, and neither answer is a step"},
        {"asked too much for a moment", {busy, right}, 2},
        {"asked too much all the time", {busy}, 2, Kind::tooMany, "asked too much"},
        {"asked too much for long", {Server::answer(429, "", "Retry-After: 11\r\n")}, 1, Kind::tooMany},
        {"asked too much, for who knows how long", {Server::answer(429, "")}, 1, Kind::tooMany},
        {"a wrong key", {Server::answer(401, "")}, 1, Kind::refused, "Look at OPENAI_API_KEY."},
        {"no such model", {Server::answer(404, R"({"error": {"message": "no such model"}})")}, 1, Kind::rejected,
            "\"no such model\". Look at \"planner_model\""},
        {"a fault of its own", {Server::answer(503, "", "Retry-After: 1\r\n")}, 1, Kind::serverFault},
        {"gone", {{"", Server::Reply::Then::hangsUp}}, 1, Kind::unreachable},
        {"no reply of that form", {Server::answer(200, "{}")}, 1, Kind::malformed},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        std::atomic<std::size_t> count = 0;
        Server server([&](const std::string&) { return row.replies[std::min(count++, row.replies.size() - 1)]; });
        const PlannerAnswer answer = planned(server, Service::openAI);
        EXPECT_EQ(server.requests().size(), row.requests);
        const auto* const error = std::get_if<DecisionError>(&answer);
        ASSERT_EQ(error != nullptr, row.kind.has_value()) << (error ? error->message : "");
        EXPECT_TRUE(!error || (error->kind == *row.kind && error->message.find(row.says) != std::string::npos))
            << error->message;
    }
}

TEST(PlannerClient, isCalledOffWhileItWaits)
{
    Server server([](const std::string&) { return Server::answer(429, "", "Retry-After: 9\r\n"); });
    std::stop_source stop;
    const std::jthread canceller([&] {
        while (server.requests().empty())
            std::this_thread::sleep_for(1ms);
        stop.request_stop();
    });
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(std::get<DecisionError>(planned(server, Service::openAI, stop.get_token())).kind, Kind::cancelled);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 3s);
}

} // namespace
} // namespace quorvell
