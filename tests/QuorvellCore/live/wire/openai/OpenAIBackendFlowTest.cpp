// SPDX-License-Identifier: MIT
// Catches responses that overlap, never begin, or begin twice.
#include "QuorvellCore/live/wire/openai/OpenAIBackendFlow.h"

#include "FixtureTable.h"
#include "QuorvellCore/live/wire/openai/OpenAIResponseEnds.h"

#include <limits>
#include <random>
#include <sstream>

namespace quorvell {

namespace {

/// What was released, readably: created numbers as "create_1", messages by their "m".
std::string words(const std::vector<Json>& released)
{
    std::string text;
    for (const Json& message : released) {
        const auto name = readString(message, "m");
        text += (text.empty() ? "" : " ") + name.value_or(readString(message, "event_id").value_or("?"));
    }
    return text;
}

OpenAIBackendFlow::Queued queued(const std::string& name, bool respond, bool stale = false)
{
    return {Json{{"m", name}}, respond, stale};
}

std::string state(const OpenAIBackendFlow& flow)
{
    return std::string(flow.isIdle() ? "idle" : "busy") + (flow.needsCreate ? ", needs a create" : "")
        + (flow.createInFlight ? ", waits for " + *flow.createInFlight : "");
}

/// One line of the fixture; what it released.
std::string play(OpenAIBackendFlow& flow, const std::string& line)
{
    std::istringstream read(line);
    std::string verb;
    std::string first;
    std::string second;
    read >> verb >> first >> second;
    if (verb == "ask" || verb == "stale" || verb == "tell")
        return words(flow.message(queued(first, verb != "tell", verb == "stale")));
    if (verb == "output")
        return words(flow.output(first, {{"m", second}}));
    if (verb == "ended")
        return words(flow.ended(first));
    if (verb == "refused")
        return words(flow.rejected(first.empty() ? std::nullopt : std::optional(first)));
    if (verb == "flush")
        return words(flow.flush());
    if (verb == "drop")
        return std::to_string(flow.dropStale());
    if (verb == "started")
        flow.started(first);
    else if (verb == "called")
        flow.called(first);
    else if (verb == "runs")
        flow.running.insert(first); // Without a word of it, as a spoken response does.
    else
        return verb == "state" ? state(flow) : "?";
    return {};
}

} // namespace

TEST(OpenAIBackendFlow, releasesEverythingInTime)
{
    test::playFixture("live/backendFlow.txt", [] {
        return [flow = OpenAIBackendFlow()](const std::string& line) mutable {
            const std::string said = play(flow, line);
            return said.empty() ? std::vector<std::string>() : std::vector{said};
        };
    });
}

TEST(OpenAIBackendFlow, holdsNoMoreThanItsBounds)
{
    OpenAIBackendFlow flow;
    for (int count = 0; count < 1000; ++count) {
        flow.started("r" + std::to_string(count));
        flow.called("c" + std::to_string(count));
        static_cast<void>(flow.message(queued("m", true)));
    }
    EXPECT_EQ(flow.running.size(), OpenAIBackendFlow::mostRunning);
    EXPECT_EQ(flow.owed.size(), OpenAIBackendFlow::mostOwed);
    EXPECT_EQ(flow.queued.size(), OpenAIBackendFlow::mostQueued);
}

/// A server that runs one response at a time, driven at random: creates never overlap, and nothing wedges.
TEST(OpenAIBackendFlow, neverOverlapsAndNeverWedges)
{
    std::mt19937 random(20261121);
    OpenAIBackendFlow flow;
    int pending = 0; // creates sent and neither started nor refused
    int responses = 0;
    int calls = 0;
    const auto send = [&](const std::vector<Json>& released) {
        for (const Json& message : released)
            pending += readString(message, "type") == "response.create" ? 1 : 0;
        ASSERT_LE(pending + static_cast<int>(flow.running.size()), 1);
    };
    const auto start = [&] {
        --pending;
        flow.started("r" + std::to_string(++responses));
    };
    for (int step = 0; step < 20000; ++step) {
        switch (random() % 6) {
        case 0:
            send(flow.message(queued("m", random() % 2 == 0, random() % 3 == 0)));
            break;
        case 1:
            if (pending > 0)
                start();
            break;
        case 2:
            if (pending > 0) {
                --pending;
                send(flow.rejected(flow.createInFlight));
            }
            break;
        case 3:
            if (!flow.running.empty())
                flow.called("c" + std::to_string(++calls));
            break;
        case 4:
            if (!flow.owed.empty())
                send(flow.output(std::string(*flow.owed.begin()), {{"m", "o"}}));
            break;
        case 5:
            if (!flow.running.empty())
                send(flow.ended(std::string(*flow.running.begin())));
            break;
        }
    }
    for (int rounds = 0; rounds < 100000 && !flow.isIdle(); ++rounds) {
        if (!flow.owed.empty())
            send(flow.output(std::string(*flow.owed.begin()), {{"m", "o"}}));
        else if (!flow.running.empty())
            send(flow.ended(std::string(*flow.running.begin())));
        else
            start();
    }
    EXPECT_TRUE(flow.isIdle());
    EXPECT_EQ(pending, 0);
}

TEST(OpenAIBackendFlowDeathTest, endsWhenNoNumberIsLeft)
{
    OpenAIBackendFlow flow;
    flow.creates = std::numeric_limits<std::int64_t>::max();
    EXPECT_DEATH(flow.message(queued("typed", true)), "no number is left");
}

TEST(OpenAIResponseEnds, remembersLately)
{
    OpenAIResponseEnds ends;
    EXPECT_TRUE(ends.isFirst("r1"));
    EXPECT_FALSE(ends.isFirst("r1"));
    for (std::size_t count = 0; count < OpenAIResponseEnds::remembered; ++count)
        EXPECT_TRUE(ends.isFirst("x" + std::to_string(count)));
    EXPECT_EQ(ends.recent.size(), OpenAIResponseEnds::remembered);
    EXPECT_TRUE(ends.isFirst("r1"));
}

} // namespace quorvell
