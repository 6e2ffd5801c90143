// SPDX-License-Identifier: MIT
// What judging an action costs, of each kind on a screen of 2,000 elements and at its worst, and where its words came
// from.
#include "QuorvellCore/automation/proposals/ActionJudge.h"
#include "QuorvellCore/automation/provenance/WordLedger.h"
#include "QuorvellCore/automation/screen/ObservationBounds.h"

#include <benchmark/benchmark.h>

namespace {

using namespace quorvell;
using Tool = AutomationAction::Tool;

constexpr int manyElements = 2'000;

ScreenLook lookOf(int elements, const std::string& label)
{
    ScreenLook look;
    look.observation = {.app = "Browser", .window = "Results", .page = "https://example.com/q"};
    look.image = Bytes();
    for (int number = 0; number < elements; ++number) {
        const bool isField = number % 10 == 0;
        look.observation.candidates.push_back({.id = "e" + std::to_string(number),
            .role = isField       ? "AXTextField"
                : number % 3 == 0 ? "AXButton"
                                  : "AXLink",
            .label = label + std::to_string(number),
            .enabled = true,
            .focused = number == 0});
        look.elements.push_back({.description = label,
            .address = "https://example.com/result",
            .area = ScreenArea{0, number * 0.5, 1000, number * 0.5 + 0.5}});
    }
    return look;
}

void judge(benchmark::State& state, const ScreenLook& look, const ScreenAction& action)
{
    const ProposedAction proposed{.action = action};
    for (auto _ : state)
        benchmark::DoNotOptimize(ActionJudge::judge(proposed, look));
}

const ScreenLook ordinary = lookOf(manyElements, "Result about the garden, number ");

void judgeAClick(benchmark::State& state)
{
    judge(state, ordinary, AutomationAction{.target = "e1999"});
}

void judgeTyping(benchmark::State& state)
{
    judge(state, ordinary, AutomationAction{.tool = Tool::typeText, .target = "e1990", .text = std::string(200, 'x')});
}

void judgeReturnInAField(benchmark::State& state)
{
    judge(state, ordinary, AutomationAction{.tool = Tool::pressKey, .key = "return"});
}

void judgeAMenu(benchmark::State& state)
{
    judge(state, ordinary,
        AutomationAction{.tool = Tool::chooseMenu, .path = std::vector<std::string>{"File", "Save As…"}});
}

void judgeASite(benchmark::State& state)
{
    judge(state, ordinary, AutomationAction{.tool = Tool::openWebsite, .address = "example.com/garden/tomatoes"});
}

void judgeASpot(benchmark::State& state)
{
    judge(state, ordinary, screen_action::ClickSpot{500, 500});
}

std::string longest(std::string_view part)
{
    std::string text;
    while (text.size() + part.size() + 8 < ObservationBounds::longestName)
        text += part;
    return text;
}

/// Names as long as they may be, in letters that have to be looked at one by one.
void judgeTheLongestLabel(benchmark::State& state)
{
    const ScreenLook look = lookOf(10, longest("plаce уour Überweisung "));
    judge(state, look, AutomationAction{.target = "e3"});
}

void tellWhereWordsCameFrom(benchmark::State& state)
{
    WordLedger ledger;
    ledger.told(WordOrigin::user, "Open the garden site and tell Ann that the tomatoes are ripe.");
    for (int number = 0; number < 20; ++number)
        ledger.seen(lookOf(100, "Page " + std::to_string(number) + " about the garden, number "));
    const std::string text = "Dear Ann, the tomatoes are ripe. Come on 12 June 2027, or write to me@home.example.";
    for (auto _ : state)
        benchmark::DoNotOptimize(ledger.originOf(text, WordUse::typedText));
}

void rememberALook(benchmark::State& state)
{
    WordLedger ledger;
    for (auto _ : state)
        ledger.seen(ordinary);
}

BENCHMARK(judgeAClick);
BENCHMARK(judgeTyping);
BENCHMARK(judgeReturnInAField);
BENCHMARK(judgeAMenu);
BENCHMARK(judgeASite);
BENCHMARK(judgeASpot);
BENCHMARK(judgeTheLongestLabel);
BENCHMARK(tellWhereWordsCameFrom);
BENCHMARK(rememberALook);

} // namespace
