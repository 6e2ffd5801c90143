// SPDX-License-Identifier: MIT
// What each step on the screen costs before and after it is taken, on a screen of 2,000 elements, beside merely copying
// that screen.
#include "QuorvellCore/automation/actions/AutomationAction.h"
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
