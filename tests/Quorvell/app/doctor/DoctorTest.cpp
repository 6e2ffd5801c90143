// SPDX-License-Identifier: MIT
// Catches keys that the doctor misses, and advice that names the wrong one.
#include "Quorvell/app/doctor/Doctor.h"

#include "QtApplication.h"
#include "Quorvell/app/chat/ModelOffer.h"
#include "Quorvell/desktop/QtScheduler.h"
#include "ScriptedHTTPServer.h"

#include <gtest/gtest.h>

namespace quorvell {
namespace {

TEST(Doctor, tellsWhichKeysThereAreAndWhichIsMissing)
{
    using B = LiveBackend;
    using Verdict = DoctorFinding::Verdict;
    const std::string good = "12345678";
    struct Row {
        LiveKeys keys;
        LiveBackend wanted;
        Verdict verdict;
        const char* said;
    };
    const Row rows[] = {
        {{}, B::automatic, Verdict::works, "none; the assistant works on this computer alone"},
        {{}, B::onDevice, Verdict::works, "none; the assistant works on this computer alone"},
        {{{B::openAI, good}, {B::gemini, good}}, B::automatic, Verdict::works, "OPENAI_API_KEY and GEMINI_API_KEY set"},
        {{{B::openAI, good}, {B::gemini, "short"}}, B::automatic, Verdict::limited,
            "GEMINI_API_KEY is set, and does not look like a key"},
        {{{B::openAI, good + "\n"}}, B::automatic, Verdict::limited,
            "OPENAI_API_KEY is set, and does not look like a key"},
        {{}, B::openAI, Verdict::limited, "Set OPENAI_API_KEY,"},
        {{}, B::gemini, Verdict::limited, "Set GEMINI_API_KEY,"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.said);
        const DoctorFinding finding = Doctor::keys(row.keys, row.wanted);
        EXPECT_EQ(finding.verdict, row.verdict);
        EXPECT_NE((finding.finding + " " + finding.advice).find(row.said), std::string::npos) << finding.finding;
    }
}

TEST(Doctor, tellsWhoDecidesStepsOnTheScreenAndNoKey)
{
    using P = PlannerService;
    const DeciderKeys keys{"secret-1", {{P::openAI, "secret-2"}}};
    struct Row {
        DeciderSettings settings;
        DeciderKeys keys;
        std::string selector;
        std::string planner;
    };
    const Row rows[] = {
        {{}, {}, "ok none; every step", "ok none; only plain steps"},
        {{.selectorHost = "s.example"}, keys, "ok active, at https://s.example",
            "ok OpenAI with gpt-5, at https://api.openai.com"},
        {{.planner = P::anthropic}, keys, "limited MARLUNE_API_KEY is set, and the settings do not say where",
            "limited The settings ask for Anthropic to plan steps on the screen, and there is no key"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.planner);
        const auto findings = Doctor::deciders(row.settings, row.keys);
        ASSERT_EQ(findings.size(), 2U);
        for (const auto& [finding, wanted] :
            {std::pair(findings[0], row.selector), std::pair(findings[1], row.planner)}) {
            const std::string verdict = finding.verdict == DoctorFinding::Verdict::works ? "ok " : "limited ";
            EXPECT_EQ((verdict + finding.finding).find(wanted), 0U) << finding.finding;
            EXPECT_EQ(finding.text(80).find("secret"), std::string::npos);
        }
    }
}

TEST(OwnServices, areWhatTheSettingsSayAndNoOther)
{
    struct Row {
        const char* settings;
        std::vector<ModelSearch::Found> found;
        const char* model; ///< How the findings begin.
        const char* recogniser;
        const char* goes; ///< A part of what is told of where words go.
    };
    const ModelSearch::Found found{*ModelAccess::addressOf("127.0.0.1:8080"), {"small", "large"}};
    const ModelSearch::Found elsewhere{*ModelAccess::addressOf("https://box.example"), {"small"}};
    const Row rows[] = {
        {"{}", {}, "ok none; the rules alone", "ok that of this computer", "nothing you say leaves it."},
        {"{}", {found}, "ok none is used, and one runs at 127.0.0.1:8080 (small, large)", "ok", "nothing"},
        {R"({"local_model_host":"localhost:8080"})", {}, "limited \"local_model_host\" is set, and", "ok", "nothing"},
        {R"({"local_model":"small"})", {}, "limited \"local_model\" is set, and", "ok", "nothing"},
        {R"({"local_model_host":"http://box.example","local_model":"small"})", {},
            "limited \"http://box.example\" is no", "ok", "nothing"},
        {R"({"local_model_host":"127.0.0.1:8080","local_model":"small"})", {found}, "ok small at http://127.0.0.1:8080",
            "ok", "nothing"},
        {R"({"local_model_host":"127.0.0.1:8080","local_model":"tiny"})", {found},
            "limited the server has no model tiny", "ok", "nothing"},
        {R"({"local_model_host":"127.0.0.1:8080","local_model":"tiny"})", {},
            "limited tiny at http://127.0.0.1:8080 does not answer", "ok", "nothing"},
        {R"({"local_model_host":"https://box.example","local_model":"small"})", {elsewhere},
            "ok small at https://box.example, which is another computer", "ok", "goes to the model at box.example"},
        {R"({"speech_recogniser_host":"10.0.0.7:10300"})", {}, "ok", "limited \"10.0.0.7:10300\" is no address",
            "nothing"},
        {R"({"speech_recogniser_host":"unencrypted://10.0.0.7:10300"})", {}, "ok",
            "ok the service at 10.0.0.7:10300, which is another computer",
            "your voice goes to 10.0.0.7:10300, unencrypted"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.settings);
        const auto services = OwnServices::of(UserSettings::parsed(row.settings, "settings.json").settings);
        const auto model = OwnServicesCheck::model(services, row.found);
        const auto hearing =
            OwnServicesCheck::speech("hearing", "your voice", services.recogniser, services.recogniserProblem, true);
        for (const auto& [finding, wanted] : {std::pair(model, row.model), std::pair(hearing, row.recogniser)}) {
            const std::string verdict = finding.verdict == DoctorFinding::Verdict::works ? "ok " : "limited ";
            EXPECT_EQ((verdict + finding.finding).find(wanted), 0U) << finding.finding;
        }
        EXPECT_NE(services.whereWordsGo().find(row.goes), std::string::npos) << services.whereWordsGo();
    }
}

TEST(ModelSearch, readsNamesThatCanBeShown)
{
    const std::pair<const char*, std::vector<std::string>> rows[] = {
        {R"({"object":"list","data":[{"id":"small"},{"id":"large:7b"}]})", {"small", "large:7b"}},
        {R"({"data":[{"id":""},{"id":7},{"name":"x"},"y",{"id":"a\u001b[2J"}]})", {}},
        {R"({"models":[]})", {}},
        {"<html>", {}},
    };
    for (const auto& [answer, names] : rows)
        EXPECT_EQ(ModelSearch::modelsIn(answer), names) << answer;
}

TEST(ModelSearch, findsOnlyWhatAnswersLikeOne)
{
    needQtApplication();
    using test::ScriptedHTTPServer;
    const ScriptedHTTPServer model(
        [](const std::string&) { return ScriptedHTTPServer::answer(200, R"({"data":[{"id":"small"}]})"); });
    const ScriptedHTTPServer other([](const std::string&) { return ScriptedHTTPServer::answer(200, "Welcome!"); });
    const ScriptedHTTPServer moved([](const std::string&) {
        return ScriptedHTTPServer::answer(302, "", "Location: http://127.0.0.1:1/v1/models\r\n");
    });
    const ScriptedHTTPServer endless([](const std::string&) {
        return ScriptedHTTPServer::Reply{"HTTP/1.1 200 X\r\n\r\n", ScriptedHTTPServer::Reply::Then::goesOn, "aaaaaaaa"};
    });
    std::vector<ServiceAddress> places{{"127.0.0.1:1", ServiceAddress::Security::none}};
    for (const ScriptedHTTPServer* server : {&other, &model, &moved, &endless})
        places.push_back({"127.0.0.1:" + server->port(), ServiceAddress::Security::none});
    QtScheduler scheduler;
    ModelSearch search(places, scheduler);
    std::optional<std::vector<ModelSearch::Found>> found;
    search.search([&](const auto& all) { found = all; });
    ASSERT_TRUE(runUntil([&] { return found.has_value(); }));
    ASSERT_EQ(found->size(), 1U);
    EXPECT_EQ(found->front().address, places[2]);
    EXPECT_NE(ModelOffer::text(*found, "settings.json").find("\"local_model\": \"small\" into settings.json"),
        std::string::npos);
    EXPECT_EQ(ModelOffer::text({}, "settings.json"), "");
}

} // namespace
} // namespace quorvell
