// SPDX-License-Identifier: MIT
// Catches steps that go to the wrong decider, a comparison that acts, hangs or outlives its task, and a cancelled task
// that goes on.
#include "QuorvellCore/automation/engine/TieredDecisionEngine.h"

#include "QuorvellCore/automation/engine/macros/MacroBook.h"
#include "Screens.h"
#include "ScriptedDecisionHTTP.h"

#include <gtest/gtest.h>

#include <atomic>
#include <semaphore>

namespace quorvell {

namespace {

using namespace std::chrono_literals;
using test::choiceAnswer;
using test::element;
using test::stepOptions;

const AutomationDecision planned{AutomationDecision::Kind::action, "planned",
    AutomationAction{.tool = AutomationAction::Tool::scroll, .direction = "down"}, std::nullopt};

DecisionContext openContext()
{
    return {"find the cheapest one", test::screenWith({element("AXButton", "Next")}), {}, {}};
}

struct EngineBench {
    std::shared_ptr<test::ScriptedDecisionHTTP> http = std::make_shared<test::ScriptedDecisionHTTP>();
    TieredDecisionEngine::Parts parts;
    std::binary_semaphore compared{0};
    std::optional<bool> agreed;
    double milliseconds = -1;

    EngineBench()
    {
        parts.planner = [](const DecisionContext&, const std::stop_token&) { return PlannerAnswer(planned); };
        parts.pim = PimSelector{.apiKey = "key", .http = http, .host = "https://selector.example"};
        parts.now = [ticks = std::make_shared<std::atomic<int>>()] {
            return std::chrono::steady_clock::time_point(5ms * ++*ticks);
        };
        parts.clock = [] { return Instant(24h); };
        parts.freshID = [count = 0]() mutable { return std::to_string(++count); };
        parts.onShadow = [this](std::optional<bool> agreement, double taken) {
            agreed = agreement;
            milliseconds = taken;
            compared.release();
        };
    }
    void selectorScrolls(const std::string& direction)
    {
        http->answerNext(test::stepReply(choiceAnswer(direction, stepOptions), Json()));
    }
};

std::string routedText(const std::variant<RoutedDecision, DecisionError>& answer)
{
    if (const auto* error = std::get_if<DecisionError>(&answer))
        return "> " + error->message;
    const auto& routed = std::get<RoutedDecision>(answer);
    EXPECT_GT(routed.milliseconds, 0);
    EXPECT_FALSE(routed.shadowAgreed);
    return std::string(routed.tier) + ": " + routed.decision.message;
}

VerifiedMacro nextMacro()
{
    MacroBook book;
    const auto step = MacroStep::learnt({.tool = AutomationAction::Tool::click, .target = "Next"},
        {Postcondition::Kind::changed, ""}, openContext().observation, openContext().goal);
    for (int run = 0; run < 2; ++run)
        EXPECT_TRUE(book.learn(openContext().goal, {step.value_or(MacroStep{})}, Instant{}));
    return book.macros().at(0);
}

} // namespace

TEST(TieredDecisionEngine, asksTheCheapestThatIsCertain)
{
    struct Row {
        const char* name;
        PimMode mode;
        void (*change)(DecisionContext&);
        bool hasMacro;
        const char* answer;
    };
    const Row rows[] = {
        {"a known way first", PimMode::active, [](DecisionContext&) {}, true, "macro: I'll press \"Next\"."},
        {"then a rule", PimMode::active, [](DecisionContext& context) { context.goal = "click Next"; }, true,
            "local: I'll press \"Next\"."},
        {"then the selector", PimMode::active, [](DecisionContext&) {}, false, "pim: I'll look further up."},
        {"after a step that worked", PimMode::active,
            [](DecisionContext& context) {
                context.history = {{"click", "More", false}, {"click", "More", true}};
            },
            false, "pim: I'll look further up."},
        {"after one that did not", PimMode::active,
            [](DecisionContext& context) {
                context.history = {{"click", "More", true}, {"click", "More", false}};
            },
            false, "planner: planned"},
        {"with a picture", PimMode::active, [](DecisionContext& context) { context.image.emplace(); }, false,
            "planner: planned"},
        {"the selector is off", PimMode::off, [](DecisionContext&) {}, false, "planner: planned"},
    };
    for (const Row& row : rows) {
        EngineBench bench;
        bench.selectorScrolls("up");
        bench.parts.pimMode = row.mode;
        if (row.hasMacro)
            bench.parts.macros = {nextMacro(), nextMacro()};
        DecisionContext context = openContext();
        row.change(context);
        TieredDecisionEngine engine(std::move(bench.parts));
        EXPECT_EQ(routedText(engine.decide(context, {})), row.answer) << row.name;
    }
}

TEST(TieredDecisionEngine, leavesToThePlannerWhatNobodyElseKnows)
{
    EngineBench bench;
    bench.parts.pimMode = PimMode::active;
    TieredDecisionEngine unsure(bench.parts);
    EXPECT_EQ(routedText(unsure.decide(openContext(), {})), "planner: planned") << "the selector failed";
    bench.parts.planner = [](const DecisionContext&, const std::stop_token&) {
        return PlannerAnswer(DecisionError{DecisionError::Kind::timedOut, 0, "too late"});
    };
    TieredDecisionEngine failing(bench.parts);
    EXPECT_EQ(routedText(failing.decide(openContext(), {})), "> too late");
    bench.parts.planner = [](const DecisionContext&, const std::stop_token&) {
        return PlannerAnswer(AutomationDecision{AutomationDecision::Kind::action, "nothing", {}, {}});
    };
    TieredDecisionEngine empty(bench.parts);
    EXPECT_EQ(routedText(empty.decide(openContext(), {})), "> The planner's answer holds no step.");
    EXPECT_EQ(
        routedText(TieredDecisionEngine({}).decide(openContext(), {})), "> No service that plans steps is set up.");
}

TEST(TieredDecisionEngine, stopsBetweenDeciders)
{
    EngineBench bench;
    bench.parts.pimMode = PimMode::active;
    std::stop_source stop;
    bench.http->whileAsked = [&] { stop.request_stop(); };
    bench.selectorScrolls("up");
    bool wasPlanned = false;
    bench.parts.planner = [&](const DecisionContext&, const std::stop_token&) {
        wasPlanned = true;
        return PlannerAnswer(planned);
    };
    TieredDecisionEngine engine(bench.parts);
    for (int round = 0; round < 2; ++round)
        EXPECT_EQ(routedText(engine.decide(openContext(), stop.get_token())), "> The task was cancelled.");
    EXPECT_FALSE(wasPlanned);
    EXPECT_EQ(bench.http->asked.size(), 1u);

    std::stop_source late;
    bench.parts.planner = [&](const DecisionContext&, const std::stop_token&) {
        late.request_stop();
        return PlannerAnswer(planned);
    };
    TieredDecisionEngine planning(bench.parts);
    EXPECT_EQ(routedText(planning.decide(openContext(), late.get_token())), "> The task was cancelled.")
        << "what was planned for a task that is over is not done";
}

TEST(TieredDecisionEngine, forgetsAMacroThatNoLongerFits)
{
    EngineBench bench;
    bench.parts.macros = {nextMacro()};
    std::vector<std::string> broken;
    bench.parts.macroBroke = [&](const VerifiedMacro& macro) { broken.push_back(macro.goal); };
    TieredDecisionEngine engine(bench.parts);
    DecisionContext context = openContext();
    context.history = {{"click", "Next", false}};
    EXPECT_EQ(routedText(engine.decide(context, {})), "planner: planned");
    EXPECT_EQ(routedText(engine.decide(openContext(), {})), "planner: planned") << "it is not asked again";
    EXPECT_EQ(broken, std::vector<std::string>{"find the cheapest one"});
}

TEST(TieredDecisionEngine, comparesBesideTheTask)
{
    struct Row {
        const char* direction;
        std::optional<bool> agreed;
    };
    const Row rows[] = {{"down", true}, {"up", false}, {"plan", std::nullopt}};
    for (const Row& row : rows) {
        EngineBench bench;
        bench.parts.pimMode = PimMode::shadow;
        bench.selectorScrolls(row.direction);
        TieredDecisionEngine engine(bench.parts);
        EXPECT_EQ(routedText(engine.decide(openContext(), {})), "planner: planned");
        ASSERT_TRUE(bench.compared.try_acquire_for(10s));
        EXPECT_EQ(bench.agreed, row.agreed) << row.direction;
        EXPECT_EQ(bench.milliseconds > 0, true);
    }
}

TEST(TieredDecisionEngine, endsWithAComparisonUnderWay)
{
    EngineBench bench;
    std::binary_semaphore asked{0};
    std::binary_semaphore mayAnswer{0};
    bench.parts.pimMode = PimMode::shadow;
    bench.http->whileAsked = [&] {
        asked.release();
        mayAnswer.acquire();
    };
    bench.selectorScrolls("down");
    {
        TieredDecisionEngine engine(bench.parts);
        EXPECT_EQ(routedText(engine.decide(openContext(), {})), "planner: planned") << "nobody waits for it";
        asked.acquire();
        engine.cancel();
        mayAnswer.release();
    }
    EXPECT_FALSE(bench.compared.try_acquire()) << "nothing is reported once the task is over";
}

TEST(ShadowWork, isBoundedAndEndsWhenTold)
{
    std::atomic<int> ended = 0;
    const auto untilTold = [&](const std::stop_token& stop) {
        while (!stop.stop_requested())
            std::this_thread::yield();
        ++ended;
    };
    {
        ShadowWork work([count = 0]() mutable { return std::to_string(++count); });
        for (std::size_t job = 0; job < ShadowWork::mostJobs; ++job)
            EXPECT_TRUE(work.submit(untilTold));
        EXPECT_FALSE(work.submit(untilTold));
        EXPECT_EQ(work.jobCount(), ShadowWork::mostJobs);
        work.cancel();
        EXPECT_EQ(work.jobCount(), 0u) << "forgotten at once";
        while (ended < static_cast<int>(ShadowWork::mostJobs) || !work.submit(untilTold))
            std::this_thread::yield();
        std::vector<std::jthread> owners;
        for (int owner = 0; owner < 3; ++owner) {
            owners.emplace_back([&] {
                for (int round = 0; round < 100; ++round) {
                    work.submit([](const std::stop_token&) {});
                    if (round % 10 == 0)
                        work.cancel();
                }
            });
        }
    }
    EXPECT_EQ(ended, static_cast<int>(ShadowWork::mostJobs) + 1) << "the last one is told by the end";
}

} // namespace quorvell
