// SPDX-License-Identifier: MIT
// What each step on the screen costs before and after it is taken, on a screen of 2,000 elements, beside merely copying
// that screen; and what it costs to decide it, by who decides, without the time that services take.
#include "QuorvellCore/automation/actions/AutomationAction.h"
#include "QuorvellCore/automation/engine/TieredDecisionEngine.h"
#include "QuorvellCore/automation/engine/macros/MacroBook.h"
#include "QuorvellCore/automation/engine/planner/PlannerReply.h"
#include "QuorvellCore/automation/engine/planner/PlannerRequest.h"
#include "QuorvellCore/automation/json/AutomationJson.h"
#include "QuorvellCore/automation/loop/ActionLoopGuard.h"
#include "QuorvellCore/automation/screen/ObservationBounds.h"
#include "QuorvellCore/automation/screen/Postcondition.h"

#include <benchmark/benchmark.h>
#include <nlohmann/json.hpp>

namespace {

using namespace quorvell;

constexpr int manyElements = 2'000;

AutomationObservation screenOf(int elements)
{
    AutomationObservation screen{.revision = 1, .app = "Browser", .window = "Results", .page = "https://example.com/q"};
    for (int number = 0; number < elements; ++number) {
        const bool isField = number % 10 == 0;
        screen.candidates.push_back({.id = "e" + std::to_string(number),
            .role = isField ? "AXTextField" : "AXLink",
            .label = "Result number " + std::to_string(number) + " about the garden",
            .value = isField ? "tomatoes, " + std::to_string(number) : "",
            .enabled = true});
    }
    return screen;
}

const AutomationObservation screen = screenOf(manyElements);

AutomationObservation screenAfter()
{
    AutomationObservation after = screen;
    after.candidates.back().label = "Sent";
    return after;
}

void copyScreenAlone(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(AutomationObservation(screen));
}

void isValid(benchmark::State& state)
{
    const AutomationAction action{
        .tool = AutomationAction::Tool::typeText, .target = "e1990", .text = std::string(200, 'x')};
    for (auto _ : state)
        benchmark::DoNotOptimize(action.isValid(screen));
}

void stateKey(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(screen.stateKey());
}

void redacted(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(screen.redacted());
}

void verified(benchmark::State& state)
{
    const AutomationObservation after = screenAfter();
    const Postcondition condition{Postcondition::Kind::labelAppeared, "sent"};
    for (auto _ : state)
        benchmark::DoNotOptimize(condition.verified(screen, after));
}

void keepWithinBounds(benchmark::State& state)
{
    for (auto _ : state) {
        AutomationObservation copy = screen;
        benchmark::DoNotOptimize(ObservationBounds::keep(copy));
    }
}

void encodeScreen(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(AutomationJson::encode(screen));
}

void decodeScreen(benchmark::State& state)
{
    const Json json = AutomationJson::encode(screen);
    for (auto _ : state)
        benchmark::DoNotOptimize(AutomationJson::decode<AutomationObservation>(json));
}

/// Asked and recorded, in a task as long as one is remembered; the keys of the screens are made anew each time.
void loopGuardPerAction(benchmark::State& state)
{
    ActionLoopGuard guard;
    const AutomationObservation after = screenAfter();
    int number = 0;
    for (auto _ : state) {
        const std::string action = "click Result number " + std::to_string(++number);
        const std::string before = screen.stateKey();
        benchmark::DoNotOptimize(guard.refusal(action, before, 0, 1));
        guard.record(action, before, after.stateKey(), ActionLoopGuard::Outcome::worked, 1);
        guard.heardThem();
    }
}

/// The same with short keys: what the guard itself costs.
void loopGuardAlone(benchmark::State& state)
{
    ActionLoopGuard guard;
    int number = 0;
    for (auto _ : state) {
        const std::string action = "click Result number " + std::to_string(++number);
        benchmark::DoNotOptimize(guard.refusal(action, "before", 0, 1));
        guard.record(action, "before", "after", ActionLoopGuard::Outcome::worked, 1);
        guard.heardThem();
    }
}

/// A classifier that scrolls at once.
class ScrollingHTTP : public DecisionHTTP {
public:
    std::variant<Json, DecisionError> post(const std::string&, const std::vector<std::pair<std::string, std::string>>&,
        const Json& body, std::chrono::milliseconds, std::stop_token) override
    {
        benchmark::DoNotOptimize(dumpJson(body)); // as whoever sends it does
        return m_reply;
    }

private:
    const Json m_reply = parseJson(R"({"answers":{"operation":{"choice":"down","confidence":1,"probabilities":)"
                                   R"({"click":0,"up":0,"down":1,"plan":0}},"sensitive":{"noul":0}}})")
                             .value_or(Json());
};

/// A planner that answers at once, in the form of a service.
PlannerAnswer planAtOnce(const DecisionContext& context, const std::stop_token&)
{
    benchmark::DoNotOptimize(dumpJson(plannerRequest(PlannerStyle::responses, "model", context, "7f3a")));
    const auto read =
        readDecision(R"({"kind":"action","message":"On.","action":{"tool":"scroll","direction":"down"}})");
    return std::get<AutomationDecision>(read);
}

TieredDecisionEngine::Parts partsOf(PimMode mode)
{
    TieredDecisionEngine::Parts parts;
    parts.planner = planAtOnce;
    parts.pim = PimSelector{.apiKey = "key", .http = std::make_shared<ScrollingHTTP>(), .host = "https://example.com"};
    parts.pimMode = mode;
    parts.clock = [] { return Instant{}; };
    return parts;
}

void decideBy(benchmark::State& state, std::string_view tier, TieredDecisionEngine::Parts parts, const char* goal)
{
    TieredDecisionEngine engine(std::move(parts));
    const DecisionContext context{goal, screen, {}, {}};
    for (auto _ : state) {
        const auto answer = engine.decide(context, {});
        const auto* routed = std::get_if<RoutedDecision>(&answer);
        if (!routed || routed->tier != tier)
            state.SkipWithError("another decider answered");
    }
}

void decideByMacro(benchmark::State& state)
{
    MacroBook book;
    const AutomationAction press{.tool = AutomationAction::Tool::click, .target = "e1999"};
    const auto step = MacroStep::learnt(press, {Postcondition::Kind::changed, ""}, screen, "read the last one");
    for (int run = 0; step && run < VerifiedMacro::timesToTrust; ++run) {
        for (std::size_t other = 1; other < MacroBook::mostMacros; ++other)
            (void)book.learn("read the one before " + std::to_string(other), {*step}, Instant{});
        (void)book.learn("read the last one", {*step}, Instant{});
    }
    TieredDecisionEngine::Parts parts = partsOf(PimMode::off);
    parts.macros = book.macros();
    decideBy(state, DecisionTier::macro, std::move(parts), "read the last one");
}

void decideByRule(benchmark::State& state)
{
    decideBy(state, DecisionTier::local, partsOf(PimMode::off), "click result number 1999 about the garden");
}

void decideBySelector(benchmark::State& state)
{
    decideBy(state, DecisionTier::pim, partsOf(PimMode::active), "find the one about tomatoes");
}

void decideByPlanner(benchmark::State& state)
{
    decideBy(state, DecisionTier::planner, partsOf(PimMode::off), "find the one about tomatoes");
}

BENCHMARK(decideByMacro);
BENCHMARK(decideByRule);
BENCHMARK(decideBySelector);
BENCHMARK(decideByPlanner);
BENCHMARK(copyScreenAlone);
BENCHMARK(isValid);
BENCHMARK(stateKey);
BENCHMARK(redacted);
BENCHMARK(verified);
BENCHMARK(keepWithinBounds);
BENCHMARK(encodeScreen);
BENCHMARK(decodeScreen);
BENCHMARK(loopGuardPerAction);
BENCHMARK(loopGuardAlone);

} // namespace
