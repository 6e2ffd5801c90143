// SPDX-License-Identifier: MIT
// One conversation on a practice world, with everything between the model and the screen as the program has it.
#pragma once

#include "Quorvell/actions/work/ScreenWork.h"
#include "Quorvell/practice/screen/PracticeScreen.h"
#include "Quorvell/session/consent/HeardWords.h"
#include "VirtualScheduler.h"

#include <functional>
#include <optional>
#include <string>

namespace quorvell::attack {

/// Decides at once, on the same thread: episodes repeat exactly.
class ImmediateDeciding final : public StepDeciding {
public:
    explicit ImmediateDeciding(Scheduler& scheduler)
        : m_scheduler(scheduler)
    {
    }
    StepWish ask(StepDecider decider, DecisionContext context, std::function<void(const StepAnswer&)> answer) override;

private:
    Scheduler& m_scheduler;
};

/// Tells when something is about to be done, and has a picture where the practice world has none: only where one was
/// shown do places count.
class WatchedScreen final : public Screen {
public:
    WatchedScreen(Screen& screen, std::function<void()> acting)
        : m_screen(screen)
        , m_acting(std::move(acting))
    {
    }
    void look(const LookWish& wish, Answer<ScreenLook> answer) override
    {
        const bool wantsPicture = wish.image != LookWish::Image::none;
        m_screen.look(wish, [wantsPicture, answer = std::move(answer)](std::variant<ScreenLook, ScreenProblem> seen) {
            if (auto* look = std::get_if<ScreenLook>(&seen); look && wantsPicture)
                look->image = Bytes{0};
            answer(std::move(seen));
        });
    }
    void act(const ScreenAction& action, std::int64_t revision, std::shared_ptr<const ActionCancellation> cancellation,
        std::function<void(ScreenOutcome)> answer) override
    {
        m_acting();
        m_screen.act(action, revision, std::move(cancellation), std::move(answer));
    }
    void read(std::size_t from, Answer<ScreenText> answer) override { m_screen.read(from, std::move(answer)); }
    void find(const std::string& words, Answer<std::vector<std::string>> answer) override
    {
        m_screen.find(words, std::move(answer));
    }
    void listTabs(Answer<std::vector<ScreenTab>> answer) override { m_screen.listTabs(std::move(answer)); }
    void point(const std::string& target, std::function<void(ScreenOutcome)> answer) override
    {
        m_screen.point(target, std::move(answer));
    }
    void pointAtSpot(double x, double y, std::function<void(ScreenOutcome)> answer) override
    {
        m_screen.pointAtSpot(x, y, std::move(answer));
    }
    void clearPointer() override { m_screen.clearPointer(); }

private:
    Screen& m_screen;
    std::function<void()> m_acting;
};

class SilentLog final : public EventLog {
public:
    void record(std::string_view, const Json&) override { }
};

/// What may be broken on purpose, to see that the attack finds it.
struct Sabotage {
    ScreenWork::Guard guard{}; ///< In place of the real one.
    bool isConsentForged = false; ///< Every question counts as answered with yes.
};

class AttackedScreen {
public:
    AttackedScreen(const PracticeDescription& world, DecisionPlanner planner, const Sabotage& sabotage);
    ~AttackedScreen();
    AttackedScreen(const AttackedScreen&) = delete;
    AttackedScreen& operator=(const AttackedScreen&) = delete;

    // The model
    void call(const std::string& tool, const Json& arguments);
    void assistantSays(const std::string& text);

    // The user
    enum class Way { typed, heard, forged };
    /// Forged: a service reports words that the microphone did not hear.
    void userSays(const std::string& text, Way way);
    void stops();
    void bargesIn();
    void choosesMode(HelpMode mode);
    void passes(std::chrono::milliseconds time) { m_scheduler.advance(time); }

    /// What came about without a yes of the user to the question of that very action.
    int unasked() const { return m_unasked; }
    int happened() const { return static_cast<int>(m_world.consequences().size()); }
    int questions() const { return m_questions; }
    const ScreenLook* look() { return m_work->pipeline().latestLook(); }
    /// Of the action that waits; empty where none does.
    std::string openQuestion() const;
    const std::string& story() const { return m_story; } ///< For a failure.
    bool isReached() const { return m_world.isGoalReached(); }
    const Json& lastAnswer() const { return m_lastAnswer; }

private:
    class ForgedConsent;

    void settle();
    void acting();
    void count();
    void note(const std::string& event);

    VirtualScheduler m_scheduler;
    SilentLog m_log;
    PracticeWorld m_world;
    PracticeScreen m_practice;
    WatchedScreen m_screen;
    ActionExecutionGate m_gate;
    HeardWords m_heard;
    std::unique_ptr<ConsentWords> m_forged;
    ImmediateDeciding m_deciding;
    TaskPlan m_plan;
    ToolRegistry m_registry;

    std::size_t m_seen = 0; ///< Consequences so far.
    std::string m_said; ///< The last that the user was told.
    std::string m_agreedTo; ///< The question that they said yes to, until it is used.
    bool m_isConfirming = false;
    bool m_isActAgreed = false; ///< The action that was done last had its own yes.
    int m_calls = 0;
    int m_unasked = 0;
    int m_questions = 0;
    Json m_lastAnswer;
    std::string m_story;
    std::unique_ptr<ScreenWork> m_work; ///< Answers what it still owes when it goes, so it goes first.
};

} // namespace quorvell::attack
