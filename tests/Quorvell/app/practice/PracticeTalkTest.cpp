// SPDX-License-Identifier: MIT
// What somebody who practises sees and types: a question that takes a pasted yes, a goal that is set about while one is
// being worked at, an end that is not told.
#include "Quorvell/app/practice/PracticeTalk.h"

#include "Quorvell/practice/file/PracticeFile.h"
#include "UnguardedRunner.h"
#include "VirtualScheduler.h"

#include <gtest/gtest.h>

#include <deque>

namespace quorvell::test {

namespace {

class ScriptedLines : public LineSource {
public:
    explicit ScriptedLines(Scheduler& scheduler)
        : m_scheduler(scheduler)
    {
    }
    void readNext(Report report) override
    {
        EXPECT_FALSE(isAsked);
        isAsked = true;
        m_report = std::move(report);
        if (answersAll)
            m_scheduler.post([this] { answer(); });
    }
    void answer()
    {
        isAsked = false;
        if (lines.empty())
            return m_report(std::nullopt);
        const TypedMessage message = lines.front();
        lines.pop_front();
        std::exchange(m_report, nullptr)(message);
    }
    std::deque<TypedMessage> lines;
    bool answersAll = true;
    bool isAsked = false;

private:
    Report m_report;
    Scheduler& m_scheduler;
};

/// Asks before each press and knows no steps of its own.
class AskingActor : public PracticeActor {
public:
    explicit AskingActor(Screen& screen)
        : m_runner(screen)
    {
        m_runner.questionFor = [](const auto&) { return "Shall I?"; };
    }
    ActionRunner& runner() override { return m_runner; }
    void userSaid(const std::string& words) override { m_words = words; }
    void settle(PracticeRun::ResultReport report) override { m_runner.settle(m_words, std::move(report)); }
    void decide(const DecisionContext& context, PracticeRun::DecisionReport report) override
    {
        if (context.goal != "think")
            report(std::nullopt);
    }
    void stop() override { }

private:
    UnguardedRunner m_runner;
    std::string m_words;
};

constexpr const char* world = R"({"title": "A lid", "goal": "Open it", "front": "Desk", "facts": {"lid": "shut"},
  "apps": [{"name": "Desk", "windows": [{"name": "w", "title": "Lid {lid}", "elements": [
    {"role": "AXButton", "label": "Open", "press": [{"set": "lid", "to": "open"}, {"happens": "file gone", "about": "dust"}]},
    {"role": "AXTextField", "label": "Name", "hint": "of you"}, {"role": "AXCheckBox", "label": "Box", "enabled": false}]}]}],
  "done_when": [{"fact": "lid", "is": "open"}], "wanted": [{"happens": "file gone"}],
  "steps": [{"kind": "action", "message": "I'll open it.", "action": {"tool": "click", "target": "Open"}},
            {"kind": "finished", "message": "It is open."}]})";

} // namespace

TEST(PracticeTalk, showsEachStepAndTakesOnlyATypedYes)
{
    VirtualScheduler scheduler;
    ScriptedLines lines(scheduler);
    const auto typed = [](const char* text) { return TypedMessage{{{text, false}}}; };
    lines.lines = {typed("fly"), typed(""), {{{"yes", true}}}, typed("Open it"), typed("yes")};
    std::string told;
    std::vector<int> ends;
    PracticeTalk talk({scheduler, lines, [&](const std::string& text) { told += text + "\n"; },
                          [&](int exitCode) { ends.push_back(exitCode); }},
        std::get<PracticeDescription>(PracticeFile::parse(world)),
        [](Screen& screen, Scheduler&, const auto&) { return std::make_unique<AskingActor>(screen); });
    talk.begin();
    scheduler.advance(std::chrono::minutes(1));
    const std::string score = "What this world asks for is not reached yet.\n";
    const std::string shut = "== Desk | Lid shut ==\n   < Open >\n   Name: [(of you)]\n   [ ] Box  (not now)\n";
    EXPECT_EQ(told,
        "A lid\nThe goal that belongs to it: Open it\nType a goal of your own, or an empty line for that one; "
        "/screen shows the screen, /leave ends.\n\n"
            + shut + "I know no step towards that.\n\n" + shut + "\n" + score
            + "0 steps, 0 questions, 0 refusals, 0 failures.\n"
            + "> I'll open it.  [click “Open”]\n  asks first\n  ? Shall I?  (yes or no)\n  refused\nIt is open.\n\n"
            + shut + "\n" + score + "1 step, 1 question, 1 refusal, 0 failures.\n"
            + "> I'll open it.  [click “Open”]\n  asks first\n  ? Shall I?  (yes or no)\n  done, and seen to have "
              "worked\n"
            + "  ! file gone: dust\nIt is open.\n\n== Desk | Lid open ==\n * < Open >\n   Name: [(of you)]\n   [ ] Box "
              " "
              "(not now)\n\nWhat this world asks for is reached.\n1 step, 1 question, 0 refusals, 0 failures.\n");
    EXPECT_EQ(ends, std::vector<int>{0});
}

TEST(PracticeTalk, isInterruptedWhileItThinksAndWhileItAsks)
{
    VirtualScheduler scheduler;
    ScriptedLines lines(scheduler);
    std::string told;
    std::vector<int> ends;
    PracticeTalk talk({scheduler, lines, [&](const std::string& text) { told = text; },
                          [&](int exitCode) { ends.push_back(exitCode); }},
        std::get<PracticeDescription>(PracticeFile::parse(world)),
        [](Screen& screen, Scheduler&, const auto&) { return std::make_unique<AskingActor>(screen); });
    lines.answersAll = false;
    talk.begin();
    for (const char* goal : {"think", ""}) {
        lines.lines.push_back({{{goal, false}}});
        lines.answer();
        scheduler.advance(std::chrono::minutes(1));
        talk.interrupt();
        EXPECT_TRUE(told.starts_with("Stopped.")) << told;
        EXPECT_TRUE(lines.isAsked);
    }
    talk.interrupt();
    EXPECT_EQ(ends, std::vector<int>{1});
}

} // namespace quorvell::test
