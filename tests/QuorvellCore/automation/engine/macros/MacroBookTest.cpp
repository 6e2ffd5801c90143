// SPDX-License-Identifier: MIT
// Catches ways that are trusted too early, that are gone on though they lead elsewhere, that say "done" by themselves,
// and files that lose or smuggle in a way.
#include "QuorvellCore/automation/engine/macros/MacroFile.h"
#include "Screens.h"

#include <map>
#include <sstream>

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

/// "click Search +, click Next -": verified or not.
std::vector<AutomationHistory> historyOf(const std::string& cell)
{
    std::vector<AutomationHistory> history;
    std::istringstream words(cell);
    for (std::string tool, target, mark; words >> tool >> target >> mark;)
        history.push_back({tool, target, mark.starts_with('+')});
    return history;
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
    AutomationObservation results = searchScreen();
    results.candidates.push_back(element("AXHeading", "Results"));
    const std::map<std::string, AutomationObservation> screens = {
        {"plain", searchScreen()}, {"empty", test::screenWith({})}, {"results", results}};
    constexpr const char* fits[] = {"other", "ready", "broken"};
    const VerifiedMacro macro = trustedWay();
    for (const auto& [name, lines] : test::fixtureRows("automation/macroFits.txt", 2)) {
        const std::vector<std::string> cells = test::cells(lines[0]);
        const DecisionContext context{cells.at(0), screens.at(cells.at(2)), historyOf(cells.at(1)), {}};
        EXPECT_EQ(
            std::string(fits[static_cast<int>(macro.fit(context, noon))]) + ": " + toldBy(macro.decide(context, noon)),
            lines[1])
            << name;
    }
    const DecisionContext first{wayGoal, searchScreen(), {}, {}};
    EXPECT_TRUE(macro.decide(first, noon + VerifiedMacro::trusted));
    EXPECT_FALSE(macro.decide(first, noon + VerifiedMacro::trusted + std::chrono::milliseconds(1)));
    const DecisionContext last{wayGoal, results, historyOf("type_text Find +, click Search +"), {}};
    EXPECT_FALSE(trustedWay(test::changed).decide(last, noon))
        << "that something is different does not show that the goal is reached";
}

TEST(MacroBook, trustsTheSecondEqualRun)
{
    MacroBook book;
    EXPECT_TRUE(book.learn(wayGoal, searchSteps(), noon));
    EXPECT_TRUE(book.macros().empty());
    EXPECT_TRUE(book.learn("search for rain", searchSteps(test::changed), noon));
    EXPECT_TRUE(book.macros().empty()) << "another way";
    EXPECT_TRUE(book.learn("Search for rain!", searchSteps(test::changed), noon));
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
            const auto [place, value] = test::verbAndRest(line);
            Json json = good;
            json[Json::json_pointer("/macros/0" + place)] = parseJson(value).value_or(Json());
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
