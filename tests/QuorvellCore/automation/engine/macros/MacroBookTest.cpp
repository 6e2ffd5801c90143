// SPDX-License-Identifier: MIT
// Catches ways that are trusted too early, that are gone on though they lead elsewhere, that say "done" by themselves,
// and files that lose or smuggle in a way.
#include "FixtureTable.h"
#include "QuorvellCore/automation/engine/macros/MacroFile.h"
#include "Screens.h"

#include <gtest/gtest.h>

namespace quorvell {

namespace {

using test::element;
using Tool = AutomationAction::Tool;

const Instant noon = parseIsoText("2026-11-22T12:00:00Z").value_or(Instant{});
constexpr const char* wayGoal = "Search for rain.";

AutomationObservation searchScreen()
{
    return test::screenWith({element("AXButton", "Search"), element("AXTextField", "Find")});
}

std::vector<MacroStep> searchSteps(
    const Postcondition& end = {Postcondition::Kind::labelAppeared, "Results"}, const char* goal = wayGoal)
{
    const AutomationObservation screen = searchScreen();
    const AutomationAction typing{.tool = Tool::typeText, .target = "Find", .text = "rain"};
    const AutomationAction pressing{.tool = Tool::click, .target = "Search"};
    std::vector<MacroStep> steps;
    for (auto step : {MacroStep::learnt(typing, {Postcondition::Kind::valueContains, "rain"}, screen, goal),
             MacroStep::learnt(pressing, end, screen, goal)})
        steps.push_back(step.value());
    return steps;
}

VerifiedMacro trustedWay(const Postcondition& end = {Postcondition::Kind::labelAppeared, "Results"})
{
    MacroBook book;
    EXPECT_TRUE(book.learn(wayGoal, searchSteps(end), noon) && book.learn(wayGoal, searchSteps(end), noon));
    return book.macros().at(0);
}

std::string toldBy(const std::optional<AutomationDecision>& decision)
{
    if (!decision)
        return "-";
    return decision->action ? std::string(storedText(decision->action->tool)) : decision->message;
}

} // namespace

TEST(VerifiedMacro, goesOnOnlyWhereItsWayWent)
{
    const AutomationHistory typed{"type_text", "Find", true};
    const AutomationHistory typedInVain{"type_text", "Find", false};
    const AutomationHistory pressed{"click", "Search", true};
    const AutomationHistory other{"click", "Else", true};
    AutomationObservation results = searchScreen();
    results.candidates.push_back(element("AXHeading", "Results"));
    AutomationObservation elsewhere = searchScreen();
    elsewhere.candidates.clear();
    using Fit = VerifiedMacro::Fit;
    struct Row {
        const char* name;
        const char* goal;
        std::vector<AutomationHistory> history;
        AutomationObservation screen;
        Fit fit;
        std::string decision;
    };
    const Row rows[] = {
        {"the beginning", "search for rain", {}, searchScreen(), Fit::ready, "type_text"},
        {"another goal", "search for snow", {}, searchScreen(), Fit::other, "-"},
        {"the goal and more", "search for rain and buy it", {}, searchScreen(), Fit::other, "-"},
        {"begins elsewhere", wayGoal, {}, elsewhere, Fit::other, "-"},
        {"the second step", wayGoal, {typed}, searchScreen(), Fit::ready, "click"},
        {"the first step had no effect", wayGoal, {typedInVain}, searchScreen(), Fit::broken, "-"},
        {"the second step's button is gone", wayGoal, {typed}, elsewhere, Fit::broken, "-"},
        {"somebody did something else", wayGoal, {other}, searchScreen(), Fit::other, "-"},
        {"somebody did more", wayGoal, {typed, pressed, other}, searchScreen(), Fit::other, "-"},
        {"tried twice", wayGoal, {typedInVain, pressed}, searchScreen(), Fit::other, "-"},
        {"the end, and it shows", wayGoal, {typed, pressed}, results, Fit::ready, "That's done."},
        {"the end, and it does not show", wayGoal, {typed, pressed}, searchScreen(), Fit::ready, "-"},
        {"the last step had no effect", wayGoal, {typed, {"click", "Search", false}}, results, Fit::broken, "-"},
    };
    const VerifiedMacro macro = trustedWay();
    for (const Row& row : rows) {
        const DecisionContext context{row.goal, row.screen, row.history, {}};
        EXPECT_EQ(macro.fit(context, noon), row.fit) << row.name;
        EXPECT_EQ(toldBy(macro.decide(context, noon)), row.decision) << row.name;
    }
    const DecisionContext first{wayGoal, searchScreen(), {}, {}};
    EXPECT_TRUE(macro.decide(first, noon + VerifiedMacro::trusted));
    EXPECT_FALSE(macro.decide(first, noon + VerifiedMacro::trusted + std::chrono::milliseconds(1)));
    EXPECT_FALSE(trustedWay({Postcondition::Kind::changed, ""}).decide({wayGoal, results, {typed, pressed}, {}}, noon))
        << "that something is different does not show that the goal is reached";
}

TEST(MacroBook, trustsTheSecondEqualRun)
{
    MacroBook book;
    EXPECT_TRUE(book.learn(wayGoal, searchSteps(), noon));
    EXPECT_TRUE(book.macros().empty());
    EXPECT_TRUE(book.learn("search for rain", searchSteps({Postcondition::Kind::changed, ""}), noon));
    EXPECT_TRUE(book.macros().empty()) << "another way";
    EXPECT_TRUE(book.learn("Search for rain!", searchSteps({Postcondition::Kind::changed, ""}), noon));
    ASSERT_EQ(book.macros().size(), 1u);
    book.drop(book.macros().at(0));
    EXPECT_TRUE(book.entries().empty());

    EXPECT_FALSE(book.learn(wayGoal, {}, noon));
    EXPECT_FALSE(book.learn("", searchSteps(), noon));
    EXPECT_FALSE(book.learn("search for snow", searchSteps(), noon)) << "it types what this goal does not name";
    EXPECT_FALSE(book.learn("search for rain with PIN 1234", searchSteps(), noon));
    EXPECT_FALSE(book.learn(wayGoal, std::vector(VerifiedMacro::mostSteps + 1, searchSteps().at(1)), noon));
    for (int number = 0; number <= static_cast<int>(MacroBook::mostMacros); ++number)
        EXPECT_TRUE(book.learn("rain " + std::to_string(number), searchSteps(), noon + std::chrono::hours(number)));
    EXPECT_EQ(book.entries().size(), MacroBook::mostMacros);
    EXPECT_EQ(book.entries().back().goal, "rain 1") << "the oldest goes";
}

TEST(MacroFile, isReadAsItWasWritten)
{
    MacroBook book;
    EXPECT_TRUE(book.add(trustedWay()));
    EXPECT_TRUE(book.learn("rain", searchSteps(), noon + std::chrono::hours(1)));
    const auto file = MacroFile::read(MacroFile::write(book));
    ASSERT_TRUE(file);
    EXPECT_EQ(file->book, book);
    EXPECT_TRUE(file->problems.empty());
    for (const char* other : {"", "[]", "{}", R"({"version":2,"macros":[]})", R"({"version":1,"macros":{}})"})
        EXPECT_FALSE(MacroFile::read(other)) << other;
}

/// Each line of the table is a place in the file and what is put there.
TEST(MacroFile, leavesOutWhatBreaksItsRules)
{
    MacroBook book;
    EXPECT_TRUE(book.add(trustedWay()));
    const Json good = parseJson(MacroFile::write(book)).value_or(Json());
    for (const test::FixtureRow& row : test::fixtureRows("automation/macros.txt")) {
        for (const std::string& line : row.lines) {
            const auto blank = line.find(' ');
            Json json = good;
            json[Json::json_pointer("/macros/0" + line.substr(0, blank))] = parseJson(line.substr(blank + 1)).value();
            const auto file = MacroFile::read(dumpJson(json));
            ASSERT_TRUE(file) << line;
            EXPECT_EQ(file->book.entries().size(), row.name == "read" ? 1u : 0u) << line;
            EXPECT_EQ(file->problems.size(), row.name == "read" ? 0u : 1u) << line;
        }
    }
    Json many = good;
    for (std::size_t count = 0; count < MacroBook::mostMacros; ++count)
        many["macros"].push_back(good["macros"][0]);
    const auto file = MacroFile::read(dumpJson(many));
    ASSERT_TRUE(file);
    EXPECT_EQ(file->book.entries().size(), 1u) << "one key, one macro";
    EXPECT_EQ(file->problems.size(), 20u);
}

} // namespace quorvell
