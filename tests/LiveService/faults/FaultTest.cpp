// SPDX-License-Identifier: MIT
// Catches faults on purpose that do not come where they were asked for.
#include "LiveService/faults/FaultyWire.h"

#include <gtest/gtest.h>

namespace quorvell {

namespace {

using namespace std::chrono_literals;
using Kind = Fault::Kind;

Fault parsed(const char* text)
{
    std::string problem;
    const auto fault = Fault::parse(text, problem);
    EXPECT_TRUE(fault) << text << ": " << problem;
    return fault.value_or(Fault{});
}

/// What a wire with the faults makes of a, b, c, d, given at once, as it happens in time.
std::string sent(const std::vector<const char*>& faults)
{
    SessionFaults session;
    for (const char* text : faults)
        session.list.push_back(parsed(text));
    FaultyWire wire(session);
    std::string result;
    for (const char* message : {"a", "b", "c", "d", "e"})
        wire.take(message, 0ms);
    while (const auto next = wire.nextDue()) {
        result += *next > 0ms ? std::to_string(next->count()) + ":" : "";
        for (const WireAction& action : wire.due(*next)) {
            if (const auto* send = std::get_if<wire_action::Send>(&action))
                result += send->text.size() > 100 ? "#" : send->text;
            else if (const auto* close = std::get_if<wire_action::Close>(&action))
                result += " " + std::to_string(close->code);
            else
                result += std::holds_alternative<wire_action::Freeze>(action) ? " frozen" : " mute";
        }
    }
    return result;
}

} // namespace

TEST(FaultyWire, failsAtTheSamePlaceEachTime)
{
    const std::pair<std::vector<const char*>, const char*> rows[] = {{{}, "abcde"}, {{"drop=2"}, "ab 1006"},
        {{"close=1008:3"}, "abc 1008"}, {{"half-open=1"}, "a frozen"}, {{"stuck=2"}, "ab mute"},
        {{"duplicate"}, "aabbccddee"}, {{"reorder"}, "badc200:e"}, {{"malformed=2"}, "ab{\"type\":\"session.cde"},
        {{"oversized=4"}, "abcd#e"}, {{"slow=500ms"}, "500:abcde"}, {{"slow=2s", "drop=1"}, "2000:a 1006"},
        {{"duplicate", "drop=2"}, "aabb 1006"}};
    for (const auto& [faults, expected] : rows)
        EXPECT_EQ(sent(faults), expected) << (faults.empty() ? "none" : faults.front());
}

TEST(Fault, readsNamesWithValuesAndSaysWhatIsWrong)
{
    EXPECT_EQ(parsed("go-away").timeLeft, 10s);
    EXPECT_EQ(parsed("go-away=1s:250ms@2"),
        (Fault{.kind = Kind::goAway, .time = 1s, .timeLeft = 250ms, .count = 5000, .session = 2}));
    EXPECT_EQ(parsed("refuse=403:service_tier").setting, "service_tier");
    EXPECT_EQ(parsed("late-pong").time, 30s);
    EXPECT_EQ(SessionFaults::of({parsed("drop@2"), parsed("age=3")}, 1).list, std::vector{parsed("age=3")});
    for (const char* text : {"", "dance", "slow=soon", "slow=-1", "refuse", "refuse=200", "close=7", "drop=0", "drop@0",
             "context=101", "duplicate=2", "go-away=1:x", "age=99999999999999999999"}) {
        std::string problem;
        EXPECT_FALSE(Fault::parse(text, problem)) << text;
        EXPECT_FALSE(problem.empty()) << text;
    }
}

} // namespace quorvell
