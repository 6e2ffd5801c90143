// SPDX-License-Identifier: MIT
// Finds actions that run unasked, on another element than was meant, or beside another one, and results that claim more
// than is known.
#include "ActionBench.h"

#include <gtest/gtest.h>

#include <optional>
#include <utility>
#include <vector>

namespace quorvell {

namespace {

using Kind = ActionResult::Kind;
using QuestionEnd = ActionObserver::QuestionEnd;

struct ActionPipelineTest : testing::Test, ActionBench, ActionObserver {
    ActionPipelineTest()
    {
        for (const char* label : {"Open", "Send", "Pay", "Buy"})
            screen.add("AXButton", label);
        screen.add("AXTextField", "Subject");
        pipeline.addObserver(*this);
        look();
    }

    void actionEnded(const ProposedAction&, const ActionResult&) override { ++ended; }
    void questionEnded(const ProposedAction&, QuestionEnd end, const ActionResult&) override { ends.push_back(end); }

    ActionResult finish()
    {
        scheduler.advance(100ms);
        if (results.empty())
            return {.kind = Kind::unknown, .words = "no answer"};
        return std::exchange(results, {}).front();
    }
    ProposedAction key(std::string name)
    {
        ProposedAction action{.callID = "key", .tool = "press_key"};
        action.action = AutomationAction{.tool = AutomationAction::Tool::pressKey, .key = std::move(name)};
        return action;
    }
    /// The question is put and answered with yes, and `meanwhile` happens before the model hands it on.
    std::optional<ActionResult> askAndAgree(const std::string& label, const std::function<void()>& meanwhile)
    {
        press(label);
        EXPECT_EQ(finish().kind, Kind::needsYes);
        consent.assistantSaid(question(label));
        type("yes");
        meanwhile();
        std::optional<ActionResult> result;
        pipeline.confirm("confirm", [&](auto confirmed) { result = std::move(confirmed); });
        scheduler.advance(100ms);
        return result;
    }

    int ended = 0;
    std::vector<QuestionEnd> ends;
};

} // namespace

TEST_F(ActionPipelineTest, tellsWhatCameOfAnAction)
{
    using Outcome = ScreenOutcome;
    struct Row {
        const char* name;
        std::function<Outcome()> happens;
        std::optional<Postcondition> expected;
        Kind kind;
        bool isVerified;
        const char* words; ///< That the answer begins with.
        std::size_t recorded;
    };
    const auto changes = [this] {
        screen.labelled("Subject")->value += "x";
        return Outcome{};
    };
    const Postcondition appears{Postcondition::Kind::labelAppeared, "Sent"};
    const std::vector<Row> rows = {
        {"something changed", changes, {}, Kind::done, true, "Done.", 1},
        {"nothing changed", [] { return Outcome{}; }, {}, Kind::done, false, "Done, but nothing", 1},
        {"what was expected does not show", changes, appears, Kind::failed, false, "It was done, but", 1},
        {"what was expected shows",
            [this] {
                screen.add("AXStaticText", "Sent");
                return Outcome{};
            },
            appears, Kind::done, true, "Done, and what", 1},
        {"only they can tell", changes, Postcondition{}, Kind::done, false, "Done. Whether", 1},
        {"it could not be done",
            [] {
                return Outcome{Outcome::Kind::failed, "The button is gone."};
            },
            {}, Kind::failed, false, "The button is gone.", 0},
        {"no answer", [] { return Outcome{Outcome::Kind::unknown}; }, {}, Kind::unknown, false,
            "The application did not answer. It may be done or not", 1},
        {"stopped on the way", [] { return Outcome{Outcome::Kind::stopped}; }, {}, Kind::stopped, false,
            "They stopped you on the way, so it may be done in part.", 1},
        {"done, and they stop before it is seen",
            [&] {
                changes();
                watch.userBargedIn();
                return Outcome{};
            },
            {}, Kind::stopped, false, "They stopped you, but the action was done", 1},
        {"done, and the screen is gone",
            [this] {
                screen.problem = "The screen is locked.";
                return Outcome{};
            },
            {}, Kind::done, false, "It was done, but what came of it can not be seen. The screen is locked.", 1},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        pipeline.ended();
        screen.problem.clear();
        look();
        screen.effect = [&row](const ScreenAction&) { return row.happens(); };
        ProposedAction action{.callID = "call", .tool = "click"};
        action.action =
            AutomationAction{.tool = AutomationAction::Tool::click, .target = idOn(*pipeline.latestLook(), "Open")};
        action.expected = row.expected;
        action.revision = pipeline.latestLook()->observation.revision;
        run(action);
        const ActionResult result = finish();
        EXPECT_EQ(result.kind, row.kind);
        EXPECT_EQ(result.isVerified, row.isVerified);
        EXPECT_TRUE(result.words.starts_with(row.words)) << result.words;
        EXPECT_EQ(pipeline.ledger().entries().size(), row.recorded);
        EXPECT_FALSE(gate.current());
    }
    EXPECT_EQ(ended, static_cast<int>(rows.size()));
}

TEST_F(ActionPipelineTest, doesNothingThatMayNotBe)
{
    struct Row {
        const char* name;
        const char* label;
        std::function<void()> before;
        Kind kind;
        const char* words;
    };
    const std::vector<Row> rows = {
        {"theirs alone", "Buy", [] {}, Kind::refused, "Buying is theirs alone."},
        {"no such element", "Nothing", [] {}, Kind::failed, "Not possible."},
        {"another call's turn", "Open", [this] { (void)gate.begin("other"); }, Kind::refused,
            "An action is still running."},
        {"guide mode", "Open", [this] { pipeline.modeChanged(HelpMode::guide); }, Kind::refused, "Nothing was done"},
        {"it is their turn again", "Open", [this] { pipeline.modeChanged(HelpMode::auto_); }, Kind::done, "Done"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        row.before();
        screen.acts.clear();
        press(row.label);
        const ActionResult result = finish();
        EXPECT_EQ(result.kind, row.kind);
        EXPECT_TRUE(result.words.starts_with(row.words)) << result.words;
        EXPECT_EQ(screen.acts.size(), row.kind == Kind::done ? 1u : 0u);
    }
    ProposedAction stale{.callID = "stale", .tool = "click"};
    stale.action = AutomationAction{.tool = AutomationAction::Tool::click, .target = "100"};
    run(stale);
    EXPECT_TRUE(finish().words.starts_with("No element with that id any more."));
    ProposedAction spot{.callID = "spot", .tool = "click_at_spot", .action = screen_action::ClickSpot{5, 5}};
    run(spot);
    EXPECT_EQ(finish().words, "Request look_at_screen with include_image true before using coordinates.");
}

TEST_F(ActionPipelineTest, agreedActionsFindTheirElementOnAFreshLook)
{
    const auto nothing = [] {};
    struct Row {
        const char* name;
        std::function<void()> meanwhile;
        std::optional<Kind> kind; ///< Absent: there was no question left.
        std::size_t acts;
    };
    const std::vector<Row> rows = {
        {"all as before", nothing, Kind::done, 1},
        {"other things came and went", [this] { screen.add("AXStaticText", "New mail"); }, Kind::done, 1},
        {"there are two of that name now", [this] { screen.add("AXButton", "Send"); }, Kind::failed, 0},
        {"it has another name now", [this] { screen.labelled("Send")->label = "Send to everyone"; }, Kind::failed, 0},
        {"it can not be pressed any more", [this] { screen.labelled("Send")->enabled = false; }, Kind::failed, 0},
        {"another application came to the front", [this] { screen.look_.observation.app = "Bank"; }, Kind::failed, 0},
        {"the same, and somebody looked",
            [this] {
                screen.look_.observation.app = "Bank";
                look();
            },
            std::nullopt, 0},
        {"it would be asked in other words now", [this] { questions["Send"] = "Shall I send it to 300 people?"; },
            Kind::needsYes, 0},
        {"it is theirs alone now",
            [this] {
                questions.erase("Send");
                isNever = true;
            },
            Kind::refused, 0},
        {"another action ran",
            [this] {
                press("Open");
                finish();
            },
            std::nullopt, 0},
        {"another question was put",
            [this] {
                press("Pay");
                finish();
            },
            std::nullopt, 0},
        {"a scam was flagged", [this] { pipeline.withdrawQuestion(); }, std::nullopt, 0},
        {"the task ended", [this] { pipeline.taskEnded(); }, std::nullopt, 0},
        {"the conversation ended", [this] { watch.ended(); }, std::nullopt, 0},
    };
    const ScreenLook first = screen.look_;
    const auto asked = questions;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        screen.look_.observation.candidates = first.observation.candidates;
        screen.look_.elements = first.elements;
        screen.look_.observation.app = first.observation.app;
        questions = asked;
        isNever = false;
        pipeline.ended();
        look();
        const auto result = askAndAgree("Send", row.meanwhile);
        const auto sent = std::ranges::count(std::exchange(screen.pressed, {}), "Send");
        EXPECT_EQ(result ? std::optional(result->kind) : std::nullopt, row.kind);
        EXPECT_EQ(static_cast<std::size_t>(sent), row.acts);
    }
}

/// Two buttons of one name have one question. A yes to the one presses neither the other nor, after it, any.
TEST_F(ActionPipelineTest, aYesIsNoneToAnotherThingOfTheSameName)
{
    press("Send");
    EXPECT_EQ(finish().kind, Kind::needsYes);
    consent.assistantSaid(question("Send"));
    screen.add("AXButton", "Send");
    look();
    ProposedAction second{.callID = "second", .tool = "click"};
    second.action = AutomationAction{
        .tool = AutomationAction::Tool::click, .target = pipeline.latestLook()->observation.candidates.back().id};
    second.revision = pipeline.latestLook()->observation.revision;
    run(second);
    EXPECT_EQ(finish().kind, Kind::refused);
    EXPECT_TRUE(pipeline.pending());
    EXPECT_EQ(pipeline.questionsThisTask().all(), 1);
}

TEST_F(ActionPipelineTest, keysGoToWhatIsInFrontNow)
{
    struct Row {
        const char* name;
        const char* key;
        std::function<void()> change;
        std::chrono::milliseconds later;
        Kind kind;
    };
    const auto focus = [this] { screen.labelled("Send")->focused = true; };
    const std::vector<Row> rows = {
        {"at once", "return", focus, 0ms, Kind::done}, // The screen itself sees to it.
        {"later, on something else", "return", focus, 3s, Kind::failed},
        {"later, all as before", "return", [] {}, 3s, Kind::done},
        {"later, and it only moves about", "page down", focus, 3s, Kind::done},
        {"later, in another window", "return", [this] { screen.look_.observation.window = "Pay?"; }, 3s, Kind::failed},
        {"later, in another program", "page down", [this] { screen.look_.observation.app = "Bank"; }, 3s, Kind::failed},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        screen.labelled("Send")->focused = false;
        screen.look_.observation.app = "Mail";
        screen.look_.observation.window = "Inbox";
        pipeline.ended();
        look();
        row.change();
        scheduler.advance(row.later);
        screen.acts.clear();
        run(key(row.key));
        EXPECT_EQ(finish().kind, row.kind);
        EXPECT_EQ(screen.acts.size(), row.kind == Kind::done ? 1u : 0u);
    }
    EXPECT_TRUE(screen.wasForLatestLook);
}

TEST_F(ActionPipelineTest, oneRunsAtATimeAndStopsWhenTold)
{
    screen.duration = 50ms;
    press("Open");
    press("Open");
    EXPECT_TRUE(results.front().words.starts_with("An action is still running."));
    results.clear();
    watch.stopped();
    EXPECT_FALSE(gate.current());
    press("Open"); // The first has not let go of the screen.
    EXPECT_EQ(std::exchange(results, {}).front().kind, Kind::refused);
    EXPECT_EQ(finish().kind, Kind::stopped);
    EXPECT_EQ(screen.acts.size(), 1u);
    press("Open");
    EXPECT_EQ(finish().kind, Kind::done);

    scheduler.advance(3s); // A key is looked at first: who stops it then finds nothing done.
    run(key("return"));
    watch.userBargedIn();
    EXPECT_EQ(finish().words, "They stopped you. Nothing was done.");
    EXPECT_EQ(screen.acts.size(), 2u);
}

TEST_F(ActionPipelineTest, theEndOfTheConversationMeetsAnActionOnItsWay)
{
    press("Open");
    watch.ended();
    EXPECT_EQ(finish().kind, Kind::stopped);
    run(key("return")); // A key is looked at first.
    watch.ended();
    EXPECT_EQ(finish().words, "They stopped you. Nothing was done.");
    {
        std::optional<ActionPipeline> gone;
        gone.emplace(ActionPipeline::Ports{.screen = screen,
                         .scheduler = scheduler,
                         .gate = gate,
                         .consent = consent,
                         .log = log,
                         .problem = nullptr,
                         .judgedForm = nullptr,
                         .originsOf = nullptr,
                         .judge = [](const auto&, const auto&) { return ActionVerdict{}; }},
            HelpMode::do_);
        gone->run(key("return"), [](const auto&) { ADD_FAILURE() << "answered by nobody"; });
    }
    scheduler.advance(100ms);
}

/// Each ends once, whoever ends it, and the question with it.
TEST_F(ActionPipelineTest, questionsEndOnce)
{
    using Steps = std::vector<QuestionEnd>;
    EXPECT_EQ(askAndAgree("Send", [] {})->kind, Kind::done);
    EXPECT_EQ(std::exchange(ends, {}), Steps{QuestionEnd::carriedOut});
    press("Send");
    finish();
    consent.assistantSaid(question("Send"));
    type("no");
    EXPECT_EQ(std::exchange(ends, {}), Steps{QuestionEnd::refused});
    EXPECT_FALSE(pipeline.pending());
    press("Send");
    press("Pay");
    watch.stopped();
    EXPECT_EQ(std::exchange(ends, {}), (Steps{QuestionEnd::dropped, QuestionEnd::dropped}));
    consent.assistantSaid(question("Pay"));
    type("yes");
    EXPECT_EQ(consent.settle(question("Pay")), ConsentWords::Answer::none);
}

TEST_F(ActionPipelineTest, checksInWithTheUser)
{
    screen.effect = [this](const ScreenAction&) {
        screen.labelled("Subject")->value += "x";
        return ScreenOutcome{};
    };
    auto pagesUntilRefused = [this, page = 0](ProposedAction::Source source) mutable {
        int done = 0;
        for (; done < 40; ++done) {
            ProposedAction action{.callID = "page", .tool = "open_website"};
            action.action = AutomationAction{.tool = AutomationAction::Tool::openWebsite,
                .address = "https://example.com/" + std::to_string(++page)};
            action.source = source;
            run(action);
            if (finish().kind != Kind::done)
                break;
        }
        return done;
    };
    EXPECT_EQ(pagesUntilRefused(ProposedAction::Source::model), 14);
    type("go on");
    EXPECT_EQ(pagesUntilRefused(ProposedAction::Source::model), 14);
    EXPECT_EQ(pagesUntilRefused(ProposedAction::Source::engine), 40); // It has brakes of its own.
    TaskPlan plan;
    plan.goal = "Sort the mail";
    plan.steps = {{"Open it"}, {"Sort it"}};
    watch.planChanged(plan);
    EXPECT_EQ(pagesUntilRefused(ProposedAction::Source::model), 25);
    plan.steps[0].done = true;
    watch.planChanged(plan);
    EXPECT_EQ(pagesUntilRefused(ProposedAction::Source::model), 25);
}

} // namespace quorvell
