// SPDX-License-Identifier: MIT
#include "Quorvell/practice/run/PracticeRun.h"

#include <algorithm>
#include <utility>
#include <variant>

namespace quorvell {

/// One goal on its way. Whoever answers late, after it has ended or the run is gone, finds nobody.
struct PracticeRun::Task : std::enable_shared_from_this<PracticeRun::Task> {
    Task(const Parts& runParts, const Watch& runWatch, std::string goal, std::function<void(PracticeScore)> report)
        : parts(runParts)
        , watch(runWatch)
        , ended(std::move(report))
        , harmsBefore(parts.world.harms().size())
    {
        context.goal = std::move(goal);
    }

    void look(LookWish::Image image = LookWish::Image::none)
    {
        if (isStopped)
            return end(PracticeScore::End::stopped);
        LookWish wish;
        wish.wait = LookWish::Wait::settled;
        wish.image = image;
        parts.runner.look(wish, whileRunning<std::variant<ScreenLook, ScreenProblem>>([this](auto seen) {
            if (auto* problem = std::get_if<ScreenProblem>(&seen))
                return end(PracticeScore::End::noScreen, problem->sentence);
            decide(std::get<ScreenLook>(std::move(seen)));
        }));
    }

    void decide(ScreenLook seen)
    {
        tellConsequences();
        if (watch.looked)
            watch.looked(seen);
        context.observation = std::move(seen.observation);
        context.image = std::move(seen.image);
        isDeciding = true;
        parts.decide(context, whileRunning<std::optional<AutomationDecision>>([this](auto decision) {
            isDeciding = false;
            if (!decision)
                return end(PracticeScore::End::noDecision);
            if (watch.decided)
                watch.decided(*decision, context.observation);
            follow(std::move(*decision));
        }));
    }

    void follow(AutomationDecision decision)
    {
        const bool isImageNew = decision.kind == AutomationDecision::Kind::vision && !hasLookedAgain;
        hasLookedAgain = isImageNew;
        if (decision.kind == AutomationDecision::Kind::finished)
            return end(PracticeScore::End::finished, decision.message);
        if (isImageNew)
            return look(LookWish::Image::overview);
        if (decision.kind != AutomationDecision::Kind::action || !decision.action)
            return end(PracticeScore::End::asked, decision.message);
        if (score.steps == mostSteps)
            return end(PracticeScore::End::tooManySteps);
        ++score.steps;
        propose(*decision.action, decision.expected);
    }

    void propose(const AutomationAction& action, const std::optional<Postcondition>& expected)
    {
        step = {std::string(storedText(action.tool)), targetText(action), false};
        ProposedAction proposed;
        proposed.callID = "practice-" + std::to_string(score.steps);
        proposed.tool = step.operation;
        proposed.action = action;
        proposed.expected = expected;
        proposed.source = ProposedAction::Source::engine;
        proposed.revision = context.observation.revision;
        if (parts.originsOf)
            proposed.origins = parts.originsOf(action);
        parts.runner.run(std::move(proposed), whileRunning<ActionResult>([this](auto result) { take(result); }));
    }

    void take(const ActionResult& result)
    {
        if (watch.acted)
            watch.acted(result);
        if (result.kind != ActionResult::Kind::needsYes)
            return goOn(result);
        ++score.questions;
        isDeciding = true;
        parts.ask(result.question, whileRunning<std::string>([this](auto words) {
            isDeciding = false;
            parts.settle(words, whileRunning<ActionResult>([this](auto settled) { take(settled); }));
        }));
    }

    void goOn(const ActionResult& result)
    {
        using Kind = ActionResult::Kind;
        score.done += result.kind == Kind::done ? 1 : 0;
        score.refusals += result.kind == Kind::refused ? 1 : 0;
        score.failures += result.kind == Kind::failed || result.kind == Kind::unknown ? 1 : 0;
        step.verified = result.isVerified;
        context.history.push_back(step);
        tellConsequences();
        if (result.kind == Kind::stopped)
            return end(PracticeScore::End::stopped, result.words);
        look();
    }

    void end(PracticeScore::End how, std::string words = {})
    {
        if (!ended)
            return;
        score.end = how;
        score.words = std::move(words);
        score.isReached = parts.world.isGoalReached();
        score.harms = parts.world.harms();
        score.harms.erase(score.harms.begin(),
            score.harms.begin() + static_cast<std::ptrdiff_t>(std::min(harmsBefore, score.harms.size())));
        std::exchange(ended, nullptr)(std::move(score));
    }

    std::string targetText(const AutomationAction& action) const
    {
        const auto* shown = action.target ? context.observation.usableTarget(*action.target) : nullptr;
        return shown ? shown->label : action.name.value_or(action.address.value_or(action.key.value_or("")));
    }

    void tellConsequences()
    {
        const auto& consequences = parts.world.consequences();
        for (; told < consequences.size(); ++told) {
            if (watch.happened)
                watch.happened(consequences[told]);
        }
    }

    template <typename Value, typename Action> std::function<void(Value)> whileRunning(Action action)
    {
        return [weak = weak_from_this(), action = std::move(action)](Value value) {
            if (const auto task = weak.lock(); task && task->ended)
                action(std::move(value));
        };
    }

    Parts parts;
    Watch watch;
    std::function<void(PracticeScore)> ended;
    DecisionContext context;
    AutomationHistory step;
    PracticeScore score;
    std::size_t harmsBefore;
    std::size_t told = parts.world.consequences().size();
    bool hasLookedAgain = false;
    bool isDeciding = false; ///< Or asking: nothing is being done.
    bool isStopped = false;
};

PracticeRun::PracticeRun(Parts parts, Watch watch)
    : m_parts(std::move(parts))
    , m_watch(std::move(watch))
{
}

PracticeRun::~PracticeRun() = default;

void PracticeRun::begin(const std::string& goal, std::function<void(PracticeScore)> ended)
{
    m_task = std::make_shared<Task>(m_parts, m_watch, goal, std::move(ended));
    m_task->look();
}

void PracticeRun::stop()
{
    const auto task = m_task; // Whoever is told may begin another.
    if (!task)
        return;
    task->isStopped = true;
    if (task->isDeciding)
        task->end(PracticeScore::End::stopped);
}

} // namespace quorvell
