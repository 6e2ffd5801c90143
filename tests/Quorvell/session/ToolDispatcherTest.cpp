#include "Quorvell/session/ToolDispatcher.h"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

namespace quorvell {
namespace {

struct Answers {
    std::vector<Json> results;
    ToolReply reply()
    {
        return ToolReply([this](const Json& result) { results.push_back(result); });
    }
};

std::string errorOf(const Json& result)
{
    return readString(result, "error").value_or("");
}

TEST(ToolReply, answersExactlyOnceWhateverHappens)
{
    Answers twice;
    ToolReply reply = twice.reply();
    reply.answer({{"status", "kept"}});
    reply.fail("too late");
    ToolReply moved = std::move(reply);
    moved.answer({{"status", "again"}});
    EXPECT_EQ(twice.results, (std::vector<Json>{{{"status", "kept"}}}));

    Answers dropped;
    Answers replaced;
    {
        ToolReply first = dropped.reply();
        ToolReply taken = std::move(first);
        ToolReply other = replaced.reply();
        other = dropped.reply();
    }
    ASSERT_EQ(replaced.results.size(), 1U);
    ASSERT_EQ(dropped.results.size(), 2U);
    EXPECT_NE(errorOf(dropped.results[0]).find("ended without an answer"), std::string::npos);

    Answers noObject;
    noObject.reply().answer("plain text");
    EXPECT_EQ(noObject.results[0], (Json{{"result", "plain text"}}));
}

class ToolDispatcherTest : public testing::Test {
protected:
    void SetUp() override
    {
        registry.add("keep_note", [this](const LiveFunctionCall& call, ToolReply reply) {
            seen.push_back(call.args);
            reply.answer({{"status", "kept"}});
        });
    }

    Json run(
        const LiveFunctionCall& call, ToolDispatcher::Conversation conversation = ToolDispatcher::Conversation::live)
    {
        Answers answers;
        ToolDispatcher(registry).run(call, answers.reply(), conversation);
        return answers.results.size() == 1 ? answers.results[0] : Json{{"answers", answers.results.size()}};
    }

    ToolRegistry registry;
    std::vector<Json> seen;
};

TEST_F(ToolDispatcherTest, handsACallToItsOwner)
{
    EXPECT_EQ(run({"call_1", "keep_note", {{"title", "Milk"}}}), (Json{{"status", "kept"}}));
    EXPECT_EQ(seen, (std::vector<Json>{{{"title", "Milk"}}}));
}

TEST_F(ToolDispatcherTest, refusesWhatNobodyCanCarryOut)
{
    const LiveFunctionCall cutOff{"call_1", "keep_note", {{std::string(LiveFunctionCall::cutOffKey), true}}};
    EXPECT_EQ(errorOf(run(cutOff)),
        "Your keep_note call was cut off before it finished, so nothing was done. It was probably too long for one "
        "reply. Do it again in smaller parts: for writing, a few paragraphs per type_text call, one after another, "
        "adding to what's there. Don't tell them it's done until every part is typed.");
    EXPECT_EQ(errorOf(run({"call_1", "make_tea", {}})), "There is no tool called make_tea.");
    EXPECT_EQ(
        errorOf(run({"call_1", "look_up", {}})).substr(0, 53), "look_up is not available in this version of Quorvell,");
    for (const LiveFunctionCall& call : {LiveFunctionCall{"call_1", "keep_note", {}}, cutOff})
        EXPECT_EQ(errorOf(run(call, ToolDispatcher::Conversation::none)), "No active conversation.");
    EXPECT_TRUE(seen.empty());
}

TEST_F(ToolDispatcherTest, offersWhatHasAnOwner)
{
    registry.add("set_reminder", [](const LiveFunctionCall&, ToolReply) {});
    registry.add("not_in_the_catalogue", [](const LiveFunctionCall&, ToolReply) {});
    std::vector<std::string> names;
    for (const Json& tool : ToolDispatcher(registry).offeredTools()) {
        names.push_back(readString(tool, "name").value_or(""));
        EXPECT_EQ(readString(tool, "type"), "function");
    }
    EXPECT_EQ(names, (std::vector<std::string>{"keep_note", "set_reminder"}));
}

TEST_F(ToolDispatcherTest, startUpFailsWhenAToolHasTwoOwners)
{
    EXPECT_EQ(ToolDispatcher::startUpProblem(registry), std::nullopt);
    registry.add("keep_note", [](const LiveFunctionCall&, ToolReply) {});
    registry.add("keep_note", [](const LiveFunctionCall&, ToolReply) {});
    const auto problem = ToolDispatcher::startUpProblem(registry);
    ASSERT_TRUE(problem);
    EXPECT_NE(problem->find("carry out keep_note."), std::string::npos) << *problem;
    EXPECT_EQ(run({"call_1", "keep_note", {}}), (Json{{"status", "kept"}})); // The first owner stays.
}

} // namespace
} // namespace quorvell
