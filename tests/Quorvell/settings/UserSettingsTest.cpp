// SPDX-License-Identifier: MIT
// Catches settings misread, and a broken file that stops the program.
#include "Quorvell/settings/UserSettings.h"

#include "Quorvell/preferences/LiveBackendTraits.h"
#include "Quorvell/preferences/PlannerTraits.h"
#include "TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <fstream>
#include <iterator>
#include <set>

namespace quorvell {
namespace {

UserSettings::Reading readText(const std::string& content)
{
    const test::TemporaryFolder folder;
    const std::string path = folder.path() + "/settings.json";
    std::ofstream(path) << content;
    return UserSettings::read(path);
}

TEST(UserSettings, takesWhatItKnows)
{
    const auto reading = readText(R"({"user_name": " Asha ", "live_host": "live.example.org", "only_send_speech": false,
        "voice": "cedar", "max_output_tokens": 500, "family_name": null, "backend": "gemini", "transport": "websocket",
        "help_mode": "do", "listening": "push_to_talk", "rest_when_quiet": false, "daily_minutes": 90,
        "microphone": "mic", "notebook_folder": "/notes", "waking_hours": "7:30-1", "pim_mode": "shadow",
        "selector_host": "s.example", "planner": "openrouter", "planner_model": "m", "planner_host": "p.example"})");
    UserSettings wanted;
    wanted.userName = "Asha";
    wanted.liveHost = "live.example.org";
    wanted.sendsOnlySpeech = false;
    wanted.modelNames = {{"voice", "cedar"}};
    wanted.modelOptions.maxOutputTokens = 500;
    wanted.backend = LiveBackend::gemini;
    wanted.transport = LiveTransport::webSocket;
    wanted.helpMode = HelpMode::do_;
    wanted.listening = UserSettings::Listening::pushToTalk;
    wanted.restsWhenQuiet = false;
    wanted.dailyMinutes = std::chrono::minutes(90);
    wanted.microphone = "mic";
    wanted.notebookFolder = {"/notes"};
    wanted.wakingHours = {std::chrono::minutes(450), std::chrono::hours(25)};
    wanted.deciders = {PimMode::shadow, "s.example", PlannerService::openRouter, "m", "p.example"};
    EXPECT_EQ(reading.settings, wanted);
    EXPECT_TRUE(reading.problems.empty());
}

TEST(UserSettings, eachBackendHasNamesOfItsOwn)
{
    const auto settings = readText(R"({"voice": "cedar", "gemini_model": "larger", "gemini_voice": ""})").settings;
    using B = LiveBackend;
    EXPECT_EQ(settings.modelsFor(B::openAI), (LiveModelSettings{"gpt-live", "cedar", "gpt-5", {}}));
    EXPECT_EQ(settings.modelsFor(B::gemini), (LiveModelSettings{"larger", "Kore", "", {}}));
    EXPECT_EQ(settings.modelsFor(B::onDevice).voice, "cedar");
}

/// A name or a key that two rows share would belong to the first of them alone.
TEST(UserSettings, everyBackendAndEverySettingIsToldApartAndDocumented)
{
    std::ifstream file(QUORVELL_FIXTURES "/../../docs/formats/settings.md");
    const std::string page(std::istreambuf_iterator<char>(file), {});
    const auto isDocumented = [&page](std::string_view name) {
        return page.find("`" + std::string(name) + "`") != page.npos;
    };
    std::set<std::string_view> keys;
    const auto isNew = [&](std::string_view key, const auto&) {
        EXPECT_TRUE(keys.insert(key).second && isDocumented(key)) << key;
    };
    UserSettings().each(isNew);
    for (const LiveBackendTraits& backend : LiveBackendTraits::all()) {
        SCOPED_TRACE(backend.name);
        EXPECT_EQ(&LiveBackendTraits::of(backend.backend), &backend);
        EXPECT_EQ(LiveBackendTraits::byName().at(std::string(backend.name)), backend.backend);
        EXPECT_TRUE(isDocumented(backend.name));
        EXPECT_EQ(backend.isHosted(), !backend.host.empty());
        EXPECT_TRUE(!backend.isHosted() || isDocumented(backend.keyVariable));
        for (const auto& choice : {backend.voiceModel, backend.voice, backend.backendModel}) {
            EXPECT_EQ(choice.setting.empty(), choice.usual.empty());
            EXPECT_TRUE(choice.setting.empty() || isDocumented(choice.setting)) << choice.setting;
            EXPECT_FALSE(keys.contains(choice.setting)) << choice.setting;
        }
    }
    for (const PlannerTraits& planner : PlannerTraits::all()) {
        SCOPED_TRACE(planner.name);
        EXPECT_EQ(&PlannerTraits::of(planner.service), &planner);
        EXPECT_EQ(PlannerTraits::byName().at(std::string(planner.name)), planner.service);
        EXPECT_TRUE(isDocumented(planner.name));
        for (const std::string_view fact : {planner.keyVariable, planner.host, planner.model})
            EXPECT_TRUE(planner.isModel() ? isDocumented(fact) : fact.empty()) << fact;
    }
}

TEST(UserSettings, aBrokenFileGivesASentenceAndTheDefaults)
{
    struct Row {
        const char* name;
        std::string content;
        const char* problem;
    };
    const Row rows[] = {
        {"no JSON", "{user_name: Asha}", "are not a JSON object. Correct the file or remove it"},
        {"no object", "[1]", "are not a JSON object"},
        {"empty", "", "is empty, too large"},
        {"too large", std::string(UserSettings::longestFile + 1, ' '), "is empty, too large"},
        {"a wrong type", R"({"user_name": 7})", "\"user_name\""},
        {"too long", R"({"voice": ")" + std::string(201, 'x') + "\"}", "must be a text of at most 200 characters"},
        {"no truth", R"({"only_send_speech": "yes"})", "must be true or false"},
        {"no such choice", R"({"backend": "clippy"})", "one of \"auto\", \"gemini\", \"on_device\", \"openai\""},
        {"no such mode", R"({"pim_mode": true})", "one of \"active\", \"off\", \"shadow\""},
        {"more minutes than a day has", R"({"daily_minutes": 1441})", "minutes from 1 to 1440"},
        {"a folder somewhere", R"({"notebook_folder": "notes"})", "beginning with /"},
        {"no hours to be awake", R"({"waking_hours": "8-8"})", "two times of day, as \"8:00-22:00\""},
        {"a slip of the pen", R"({"rest_when_quite": true})", "no setting \"rest_when_quite\""},
        {"no number of tokens", R"({"max_output_tokens": -1})", "must be a whole number above 0"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto reading = readText(row.content);
        EXPECT_EQ(reading.settings, UserSettings{});
        ASSERT_EQ(reading.problems.size(), 1U);
        EXPECT_NE(reading.problems[0].find(row.problem), std::string::npos) << reading.problems[0];
    }
    EXPECT_TRUE(UserSettings::read("/nonexistent/settings.json").problems.empty());
    EXPECT_EQ(UserSettings::read("/").problems.size(), 1U);
    // Nobody writes to the pipe, so that who opens it to read waits.
    const test::TemporaryFolder folder;
    ASSERT_EQ(mkfifo((folder / "settings.json").c_str(), 0600), 0);
    EXPECT_EQ(UserSettings::read(folder / "settings.json").problems.size(), 1U);
}

} // namespace
} // namespace quorvell
