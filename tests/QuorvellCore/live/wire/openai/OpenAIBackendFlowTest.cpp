// SPDX-License-Identifier: MIT
// Catches responses that overlap, never begin, or begin twice.
#include "QuorvellCore/live/wire/openai/OpenAIBackendFlow.h"

#include "QuorvellCore/live/wire/openai/OpenAIResponseEnds.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

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

OpenAIBackendFlow::Queued queued(const char* name, bool respond, bool stale = false)
{
    return {Json{{"m", name}}, respond, stale};
}

} // namespace

TEST(OpenAIBackendFlow, oneTurnWithAToolCall)
{
    OpenAIBackendFlow flow;
    EXPECT_TRUE(flow.isIdle());
    EXPECT_EQ(words(flow.message(queued("typed", true))), "typed create_1");
    EXPECT_FALSE(flow.isIdle());
    flow.started("r1");
    EXPECT_FALSE(flow.createInFlight);
    flow.called("c1");
    EXPECT_EQ(words(flow.message(queued("picture", false))), "");
    EXPECT_EQ(words(flow.output("c1", {{"m", "result"}})), "result") << "goes out at once, only the create waits";
    EXPECT_EQ(words(flow.ended("r1")), "picture create_2");
    flow.started("r2");
    EXPECT_EQ(words(flow.ended("r2")), "");
    EXPECT_TRUE(flow.isIdle());
}

TEST(OpenAIBackendFlow, createsWaitForEverythingAndComeOnce)
{
    OpenAIBackendFlow flow;
    flow.started("r1");
    flow.called("c1");
    flow.called("c2");
    EXPECT_EQ(words(flow.message(queued("first", true))), "");
    EXPECT_EQ(words(flow.message(queued("second", true))), "");
    EXPECT_EQ(words(flow.ended("r1")), "") << "two results are owed";
    EXPECT_EQ(words(flow.output("c1", {{"m", "result 1"}})), "result 1");
    EXPECT_EQ(words(flow.output("c2", {{"m", "result 2"}})), "result 2 first second create_1");
    EXPECT_EQ(words(flow.message(queued("third", true))), "") << "a create is in flight";
}

TEST(OpenAIBackendFlow, outputOfAnUnknownOrAnsweredCallIsDropped)
{
    OpenAIBackendFlow flow;
    EXPECT_EQ(words(flow.output("never", {{"m", "result"}})), "");
    EXPECT_TRUE(flow.isIdle());
    flow.called("c1");
    EXPECT_EQ(words(flow.output("c1", {{"m", "result"}})), "result create_1");
    EXPECT_EQ(words(flow.output("c1", {{"m", "again"}})), "");
}

TEST(OpenAIBackendFlow, messagesThatAskForNothingCreateNothing)
{
    OpenAIBackendFlow flow;
    EXPECT_EQ(words(flow.flush()), "");
    EXPECT_EQ(words(flow.message(queued("note", false))), "note");
    EXPECT_EQ(flow.creates, 0);
    EXPECT_TRUE(flow.isIdle());
}

TEST(OpenAIBackendFlow, refusedCreatesAreTriedAgain)
{
    using ID = std::optional<std::string>;
    const struct Row {
        const char* name;
        bool isRunning;
        ID refused;
        std::string released;
        bool needsCreate;
        ID inFlight;
    } rows[] = {
        {"the one in flight", false, "create_1", "create_2", false, "create_2"},
        {"the one in flight while a response runs", true, "create_1", "", true, std::nullopt},
        {"an older one", false, "create_0", "", true, "create_1"},
        {"another message", false, "typed_1", "", false, "create_1"},
        {"no id", false, std::nullopt, "", false, "create_1"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        OpenAIBackendFlow flow;
        EXPECT_EQ(words(flow.message(queued("typed", true))), "typed create_1");
        if (row.isRunning)
            flow.running.emplace("spoken");
        EXPECT_EQ(words(flow.rejected(row.refused)), row.released);
        EXPECT_EQ(flow.needsCreate, row.needsCreate);
        EXPECT_EQ(flow.createInFlight, row.inFlight);
    }
}

TEST(OpenAIBackendFlow, endClearsTheCreateOnlyWhenNothingRuns)
{
    OpenAIBackendFlow flow;
    static_cast<void>(flow.message(queued("typed", true)));
    flow.running = {"r1", "r2"};
    static_cast<void>(flow.ended("r1"));
    EXPECT_TRUE(flow.createInFlight);
    static_cast<void>(flow.ended("r2"));
    EXPECT_FALSE(flow.createInFlight);
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

TEST(OpenAIBackendFlow, dropsStaleMessagesInPlace)
{
    OpenAIBackendFlow flow;
    flow.started("r1");
    for (const auto& [name, stale] : {std::pair("a", true), {"b", false}, {"c", true}, {"d", false}})
        static_cast<void>(flow.message(queued(name, true, stale)));
    EXPECT_EQ(flow.dropStale(), 2u);
    EXPECT_EQ(words(flow.ended("r1")), "b d create_1");
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
