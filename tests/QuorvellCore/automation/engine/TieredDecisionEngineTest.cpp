// SPDX-License-Identifier: MIT
// Catches steps that go to the wrong decider, a comparison that acts, hangs or outlives its task, and a cancelled task
// that goes on.
#include "QuorvellCore/automation/engine/TieredDecisionEngine.h"

#include "QuorvellCore/automation/engine/macros/MacroBook.h"
#include "Screens.h"
#include "ScriptedDecisionHTTP.h"

#include <atomic>
#include <semaphore>

namespace quorvell {

namespace {

using namespace std::chrono_literals;
using test::element;

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
    const auto step = MacroStep::learnt({.tool = AutomationAction::Tool::click, .target = "Next"}, test::changed,
        openContext().observation, openContext().goal);
    for (int run = 0; run < 2; ++run)
        EXPECT_TRUE(book.learn(openContext().goal, {step.value_or(MacroStep{})}, Instant{}));
    return book.macros().at(0);
}

} // namespace

TEST(TieredDecisionEngine, asksTheCheapestThatIsCertain)
{
    for (const auto& [name, lines] : test::fixtureRows("automation/tiers.txt", 2)) {
        const std::vector<std::string> cells = test::cells(lines[0]);
        EngineBench bench;
        bench.http->answerNext(test::sureReply("up"));
        bench.parts.pimMode = pimMode(cells.at(0)).value_or(PimMode::shadow);
        if (cells.at(2) == "macro")
            bench.parts.macros = {nextMacro(), nextMacro()};
        DecisionContext context = openContext();
        context.goal = cells.at(1);
        if (cells.at(2) == "picture")
            context.image.emplace();
        for (const Json& step : parseJson(cells.at(3)).value_or(Json()))
            context.history.push_back(test::recordOf<AutomationHistory>(dumpJson(step)));
        EXPECT_EQ(routedText(TieredDecisionEngine(bench.parts).decide(context, {})), lines[1]) << name;
    }
}

TEST(TieredDecisionEngine, leavesToThePlannerWhatNobodyElseKnows)
{
    EngineBench bench;
    bench.parts.pimMode = PimMode::active;
    const auto decideWith = [&](const PlannerAnswer& answer) {
        bench.parts.planner = [answer](const DecisionContext&, const std::stop_token&) { return answer; };
        return routedText(TieredDecisionEngine(bench.parts).decide(openContext(), {}));
    };
    EXPECT_EQ(decideWith(planned), "planner: planned") << "the selector failed";
    EXPECT_EQ(decideWith(DecisionError{DecisionError::Kind::timedOut, 0, "too late"}), "> too late");
    EXPECT_EQ(decideWith(AutomationDecision{AutomationDecision::Kind::action, "nothing", {}, {}}),
        "> The planner's answer holds no step.");
    EXPECT_EQ(routedText(TieredDecisionEngine({}).decide(openContext(), {})),
        "> No service that plans steps is set up, so only plain steps can be done: name what to press just as it is "
        "written.");
}

TEST(TieredDecisionEngine, stopsBetweenDeciders)
{
    EngineBench bench;
    bench.parts.pimMode = PimMode::active;
    std::stop_source stop;
    int plans = 0;
    bench.parts.planner = [&](const DecisionContext&, const std::stop_token&) {
        ++plans;
        stop.request_stop();
        return PlannerAnswer(planned);
    };
    TieredDecisionEngine engine(bench.parts);
    for (int round = 0; round < 2; ++round)
        EXPECT_EQ(routedText(engine.decide(openContext(), stop.get_token())), "> The task was cancelled.");
    EXPECT_EQ(plans, 1) << "what was planned for a task that is over is not done";

    stop = std::stop_source();
    bench.http->whileAsked = [&] { stop.request_stop(); };
    bench.http->answerNext(test::sureReply("up"));
    EXPECT_EQ(routedText(engine.decide(openContext(), stop.get_token())), "> The task was cancelled.");
    EXPECT_EQ(plans, 1);
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
    using Agreement = std::optional<bool>;
    for (const auto& [direction, agreed] :
        {std::pair("down", Agreement(true)), {"up", Agreement(false)}, {"plan", Agreement()}}) {
        EngineBench bench;
        bench.parts.pimMode = PimMode::shadow;
        bench.http->answerNext(test::sureReply(direction));
        TieredDecisionEngine engine(bench.parts);
        EXPECT_EQ(routedText(engine.decide(openContext(), {})), "planner: planned");
        ASSERT_TRUE(bench.compared.try_acquire_for(10s));
        EXPECT_EQ(bench.agreed, agreed) << direction;
        EXPECT_GT(bench.milliseconds, 0);
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
    bench.http->answerNext(test::sureReply("down"));
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
