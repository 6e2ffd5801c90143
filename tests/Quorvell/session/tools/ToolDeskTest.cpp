// SPDX-License-Identifier: MIT
// Tool calls: each is answered exactly once, one action runs at a time.
// Catches tool calls answered twice or never, run side by side, or run though they may not.
#include "Quorvell/session/tools/ToolDesk.h"

#include "RecordingObserver.h"
#include "VirtualScheduler.h"
#include "WrittenLog.h"

#include <gtest/gtest.h>

namespace quorvell {
namespace {

using namespace std::chrono_literals;
using Lines = std::vector<std::string>;

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
}

class ToolDeskTest : public testing::Test {
protected:
    void SetUp() override
    {
        for (const char* name : {"keep_note", "click", "scroll", "look_at_screen", "flag_scam"})
            registry.add(name, [this](const LiveFunctionCall& call, ToolReply reply) {
                seen.push_back(call.name + dumpJson(call.args));
                replies.push_back(std::move(reply));
            });
    }
    void take(const tool_report::Answered& answer)
    {
        answered.push_back(
            std::to_string(answer.askedBy) + " " + answer.answered.call.id + " " + dumpJson(answer.answered.result));
        scheduling = answer.scheduling;
        time = answer.time;
    }
    void take(tool_report::HelpModeAsked& asked) { asked.reply.answer({{"mode", "asked"}}); }
    void take(const tool_report::HelpModeDue&) { FAIL() << "not the desk's to say"; }
    void take(const tool_report::TakesLong&) { ++reminders; }

    void call(const std::string& id, const std::string& name, const Json& args = Json::object(), std::uint64_t line = 1)
    {
        desk.handle({{id, name, args}}, line);
    }
    Lines answersSince() { return std::exchange(answered, {}); }

    VirtualScheduler scheduler;
    WrittenLog log;
    RecordingObserver observer;
    ToolRegistry registry;
    ToolDispatcher tools{registry};
    Lines seen;
    Lines answered;
    LiveResponseScheduling scheduling = LiveResponseScheduling::whenIdle;
    ToolDesk desk{{scheduler, tools, log, observer,
                      [this](ToolReport report) { std::visit([this](auto& fact) { take(fact); }, report); }},
        {}};
    std::vector<ToolReply> replies;
    int reminders = 0;
    tool_report::Answered::Time time = tool_report::Answered::Time::due;
};

TEST_F(ToolDeskTest, aCallIsRunAndAnsweredOnceHoweverOftenItIsReported)
{
    call("c1", "keep_note", {{"title", "Milk"}});
    call("c1", "keep_note", {{"title", "Milk"}});
    EXPECT_EQ(seen, (Lines{R"(keep_note{"title":"Milk"})"}));
    call("c1", "keep_note", Json::object(), 2); // Another line counts afresh.
    ASSERT_EQ(replies.size(), 2U);
    EXPECT_EQ(desk.runningCalls().size(), 2U);
    replies[1].answer({{"status", "kept"}});
    replies[0].fail("The disk is full.");
    EXPECT_EQ(answersSince(), (Lines{R"(2 c1 {"status":"kept"})", R"(1 c1 {"error":"The disk is full."})"}));
    EXPECT_FALSE(desk.isWorking());
    call("c2", "set_mode");
    EXPECT_EQ(answersSince(), (Lines{R"(1 c2 {"mode":"asked"})"}));
}

TEST_F(ToolDeskTest, whatMayNotRunIsRefusedInWords)
{
    const Json cutOff{{std::string(LiveFunctionCall::cutOffKey), true}, {"plan_update", {{"facts", {"seen"}}}}};
    struct Row {
        const char* tool;
        Json args;
        ToolDesk::Conversation conversation;
        std::string error;
    };
    const auto live = ToolDesk::Conversation::live;
    const Row rows[] = {
        {"keep_note", Json::object(), ToolDesk::Conversation::none, "No active conversation."},
        {"keep_note", cutOff, ToolDesk::Conversation::none, "No active conversation."},
        {"keep_note", cutOff, live,
            "Your keep_note call was cut off before it finished, so nothing was done. It was probably too long for one "
            "reply. Do it again in smaller parts: for writing, a few paragraphs per type_text call, one after another, "
            "adding to what's there. Don't tell them it's done until every part is typed."},
        {"make_tea", Json::object(), live, "There is no tool called make_tea."},
        {"look_up", Json::object(), live,
            "look_up is not available in this version of Quorvell, so nothing was done. "
            "Say so plainly, and offer what the other tools can do or how they can do it themselves."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.tool);
        Answers answers;
        desk.run({"c1", row.tool, row.args}, answers.reply(), row.conversation);
        ASSERT_EQ(answers.results.size(), 1U);
        EXPECT_EQ(errorOf(answers.results[0]), row.error);
    }
    EXPECT_TRUE(seen.empty());
    EXPECT_TRUE(desk.plan().facts.empty()); // Half a call says nothing about the plan.
}

TEST_F(ToolDeskTest, oneActionRunsAtATimeAndLooksGoOn)
{
    constexpr const char* busy = R"({"error":"An action is still running. Wait for its result and fresh screen before )"
                                 R"(choosing the next step."})";
    call("c1", "click", {{"then", {{"tool", "scroll"}}}});
    EXPECT_EQ(readString(desk.nextStep(), "tool"), "scroll");
    call("c2", "scroll", {{"plan_update", {{"facts", {"The list is long."}}}}});
    EXPECT_EQ(answersSince(), (Lines{std::string("1 c2 ") + busy}));
    EXPECT_EQ(desk.plan().facts, (Lines{"The list is long."})); // What was found out is true all the same.
    call("c3", "look_at_screen");
    EXPECT_EQ(replies.size(), 2U);
    EXPECT_TRUE(desk.isActing());
    replies[0].answer({{"status", "clicked"}});
    EXPECT_FALSE(desk.isActing());
    call("c4", "scroll");
    EXPECT_EQ(replies.size(), 3U);
    replies.clear(); // A tool that forgets to answer does not block the next action.
    EXPECT_FALSE(desk.isActing());
    EXPECT_EQ(answersSince().size(), 3U);
}

TEST_F(ToolDeskTest, thePlanIsShownAsItChanges)
{
    for (const char* name : {"start_task", "update_plan"})
        registry.add(name, [](const LiveFunctionCall&, ToolReply reply) { reply.answer(Json::object()); });
    call("c1", "start_task", {{"goal", "Move in"}, {"steps", {"Pack", "Carry"}}});
    call("c2", "start_task", {{"goal", "No steps"}});
    call("c3", "scroll", {{"plan_update", {{"done", {1}}}}});
    call("c4", "update_plan", {{"done", {2}}, {"facts", {"It is heavy."}}});
    call("c5", "update_plan", {{"done", {2}}}); // Nothing new.
    Lines plans = observer.lines;
    std::erase_if(plans, [](const std::string& line) { return !line.starts_with("plan"); });
    EXPECT_EQ(plans, (Lines{"plan 0 of 2", "plan 1 of 2", "plan 2 of 2"}));
}

TEST_F(ToolDeskTest, aCancelledActionStopsAndIsStillAnsweredOnce)
{
    call("c1", "click");
    const auto other = desk.execution().begin("other");
    EXPECT_FALSE(other);
    desk.cancel({"c1", "unknown"});
    EXPECT_FALSE(desk.isActing());
    call("c2", "scroll"); // The next may begin at once.
    replies[0].answer({{"status", "stopped"}});
    EXPECT_EQ(scheduling, LiveResponseScheduling::silent);
    EXPECT_TRUE(desk.isActing()); // The end of the old one does not end the new one.
    EXPECT_EQ(answersSince(), (Lines{R"(1 c1 {"status":"stopped"})"}));
    call("c3", "flag_scam");
    replies[2].answer({{"status", "scam_flagged"}});
    EXPECT_EQ(scheduling, LiveResponseScheduling::interrupt);
}

TEST_F(ToolDeskTest, longWorkIsSpokenOfAndTooManyCallsAreRefused)
{
    call("c1", "click");
    scheduler.advance(25s);
    EXPECT_EQ(reminders, 2);
    replies[0].answer({});
    scheduler.advance(25s);
    EXPECT_EQ(reminders, 2);
    for (int count = 0; count < 40; ++count)
        call("many" + std::to_string(count), "look_at_screen");
    EXPECT_EQ(replies.size(), 33U);
    EXPECT_NE(answersSince().back().find("Too many calls at once"), std::string::npos);
}

TEST_F(ToolDeskTest, whatDoesNotAnswerInTimeIsAnsweredForTruly)
{
    struct Row {
        const char* tool;
        std::chrono::milliseconds longest;
        const char* says;
        LiveResponseScheduling late; ///< How its result is told that comes after all.
    };
    const Row rows[] = {
        {"keep_note", 20s, "within 20 seconds, so it may be done or not.", LiveResponseScheduling::whenIdle},
        {"look_at_screen", 20s, "within 20 seconds, so it is not known.", LiveResponseScheduling::silent},
        {"click", 600s, "within 600 seconds, so it may be done or not.", LiveResponseScheduling::whenIdle},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.tool);
        call(row.tool, row.tool);
        scheduler.advance(row.longest - 1s);
        EXPECT_TRUE(desk.isWorking());
        scheduler.advance(1s);
        EXPECT_FALSE(desk.isWorking() || desk.isActing());
        const Lines told = answersSince();
        ASSERT_EQ(told.size(), 1U);
        EXPECT_NE(told[0].find(row.says), std::string::npos) << told[0];
        EXPECT_EQ(time, tool_report::Answered::Time::due);
        for (const char* status : {"kept", "kept again"})
            replies.back().answer({{"status", status}});
        EXPECT_EQ(answersSince(), (Lines{std::string("1 ") + row.tool + R"( {"status":"kept"})"}));
        EXPECT_EQ(time, tool_report::Answered::Time::late);
        EXPECT_EQ(scheduling, row.late);
    }
}

TEST_F(ToolDeskTest, aModelThatCallsWithoutEndIsStoppedUntilTheUserSpeaks)
{
    int calls = 0;
    const auto runsOf = [&](const char* tool, int count) {
        const std::size_t before = seen.size();
        for (int index = 0; index < count; ++index) {
            call("n" + std::to_string(++calls), tool);
            replies.clear(); // Each is answered at once.
        }
        return static_cast<int>(seen.size() - before);
    };
    const auto lastAnswer = [&] { return answersSince().back(); };
    desk.noteRequests(1);
    EXPECT_EQ(runsOf("keep_note", 1000), CallAllowance::mostChanges);
    EXPECT_NE(lastAnswer().find(R"({"status":"needs_confirmation","question":"I have changed 20 things)"),
        Lines::value_type::npos);
    EXPECT_EQ(std::ranges::count_if(observer.lines,
                  [](const std::string& line) {
                      return line.find("no more is done. Say whether it shall go on.") != line.npos;
                  }),
        1);
    desk.noteRequests(1); // Nobody has said anything.
    EXPECT_EQ(runsOf("keep_note", 5), 0);
    EXPECT_EQ(runsOf("look_at_screen", 1000), CallAllowance::mostCalls - CallAllowance::mostChanges);
    EXPECT_NE(lastAnswer().find("too many for one request"), std::string::npos);
    call("mode", "set_mode"); // The user's brake.
    EXPECT_EQ(lastAnswer(), R"(1 mode {"mode":"asked"})");
    desk.noteRequests(2);
    EXPECT_EQ(runsOf("keep_note", 1000), CallAllowance::mostChangesOfAMinute - CallAllowance::mostChanges);
    EXPECT_NE(lastAnswer().find("more than 30 changes within a minute"), std::string::npos);
    scheduler.advance(60s);
    desk.noteRequests(3);
    EXPECT_EQ(runsOf("make_tea", 1000), 0); // Whatever nobody knows counts as well.
    EXPECT_EQ(runsOf("keep_note", 5), 0);
}

TEST_F(ToolDeskTest, toolsWithoutAnOwnerAreNotOfferedAndTwoOwnersStopTheProgram)
{
    registry.add("set_reminder", [](const LiveFunctionCall&, ToolReply) {});
    registry.add("not_in_the_catalogue", [](const LiveFunctionCall&, ToolReply) {});
    Lines names;
    for (const Json& tool : tools.offeredTools())
        names.push_back(readString(tool, "name").value_or(""));
    EXPECT_EQ(
        names, (Lines{"click", "scroll", "look_at_screen", "flag_scam", "set_mode", "keep_note", "set_reminder"}));
    EXPECT_EQ(ToolDispatcher::startUpProblem(registry), std::nullopt);
    registry.add("keep_note", [](const LiveFunctionCall&, ToolReply) {});
    const auto problem = ToolDispatcher::startUpProblem(registry);
    ASSERT_TRUE(problem);
    EXPECT_NE(problem->find("carry out keep_note."), std::string::npos) << *problem;
}

} // namespace
} // namespace quorvell
