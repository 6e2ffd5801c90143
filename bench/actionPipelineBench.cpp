// SPDX-License-Identifier: MIT
// What the way of one action costs beside the screen itself: a press on a screen of 2,000 elements from the call to its
// result, beside one look at that screen.
#include "ActionBench.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

using namespace quorvell;

constexpr int manyElements = 2'000;

void fill(ActionBench& bench)
{
    for (int number = 0; number < manyElements; ++number)
        bench.screen.add("AXLink", "Result number " + std::to_string(number) + " about the garden");
    bench.screen.effect = [&bench](const ScreenAction&) {
        bench.screen.look_.observation.window += '.';
        return ScreenOutcome{};
    };
    bench.look();
}

void lookAlone(benchmark::State& state)
{
    ActionBench bench;
    fill(bench);
    for (auto _ : state)
        bench.look();
}

void oneAction(benchmark::State& state)
{
    ActionBench bench;
    fill(bench);
    int number = 0;
    for (auto _ : state) {
        bench.watch.userSaid({});
        bench.press("Result number " + std::to_string(++number % manyElements) + " about the garden");
        bench.scheduler.advance(100ms);
        bench.results.clear();
    }
}

/// Answered with its question: nothing is done on the screen.
void oneQuestion(benchmark::State& state)
{
    ActionBench bench;
    fill(bench);
    bench.screen.labelled("Result number 7 about the garden")->label = "Send";
    bench.look();
    for (auto _ : state) {
        bench.press("Send");
        bench.results.clear();
    }
}

BENCHMARK(lookAlone);
BENCHMARK(oneAction);
BENCHMARK(oneQuestion);

} // namespace
