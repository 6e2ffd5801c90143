// SPDX-License-Identifier: MIT
// What a verdict of the guard costs, by what it is asked about, beside merely reading the label in lower case.
#include "QuorvellCore/safety/SafetyGuard.h"
#include "QuorvellCore/text/LowerCase.h"

#include <benchmark/benchmark.h>

#include <array>
#include <string>
#include <string_view>

namespace {

using namespace quorvell;

constexpr auto labels = std::to_array<std::string_view>({"OK", "Next page", "Accept all cookies", "Send",
    "Show more results from this collection", "Place your order", "Settings", "Bold", "Reply all", "1,024 unread"});
constexpr auto foreignLabels =
    std::to_array<std::string_view>({"Überweisung ausführen", "Отправить", "設定", "Рау nоw"});
constexpr auto addresses = std::to_array<std::string_view>({"https://www.example.com/news/today?page=2",
    "https://online.hsbc.co.uk/", "https://bücher.example/", "example.org/checkout"});

/// The time of one verdict, over all texts in turn.
template <std::size_t size, typename Judge>
void judgeInTurn(benchmark::State& state, const std::array<std::string_view, size>& texts, const Judge& judge)
{
    std::size_t index = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(judge(texts[index++ % size]));
    state.counters["a_second"] =
        benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}

void lowerCaseALabel(benchmark::State& state)
{
    judgeInTurn(state, labels, lowerCased);
}

void judgeALabel(benchmark::State& state)
{
    judgeInTurn(state, labels, [](std::string_view label) { return SafetyGuard::risk(label, "AXButton"); });
}

void judgeALabelOfOtherLetters(benchmark::State& state)
{
    judgeInTurn(state, foreignLabels, [](std::string_view label) { return SafetyGuard::risk(label, "AXButton"); });
}

void judgeAField(benchmark::State& state)
{
    judgeInTurn(state, labels, [](std::string_view label) { return SafetyGuard::fieldRisk(label, "AXTextField"); });
}

void judgeAnAddress(benchmark::State& state)
{
    judgeInTurn(state, addresses, [](std::string_view address) { return SafetyGuard::websiteRisk(address); });
}

void judgeAnAnswer(benchmark::State& state)
{
    judgeInTurn(state, labels, [](std::string_view label) { return SafetyGuard::isAffirmative(label); });
}

void judgeALabelOfAMegabyte(benchmark::State& state)
{
    std::string text;
    while (text.size() < 1024 * 1024)
        text += "place your Überweisung ";
    for (auto _ : state)
        benchmark::DoNotOptimize(SafetyGuard::risk(text, "AXButton"));
}

BENCHMARK(lowerCaseALabel);
BENCHMARK(judgeALabel);
BENCHMARK(judgeALabelOfOtherLetters);
BENCHMARK(judgeAField);
BENCHMARK(judgeAnAddress);
BENCHMARK(judgeAnAnswer);
BENCHMARK(judgeALabelOfAMegabyte)->Unit(benchmark::kMillisecond);

} // namespace
