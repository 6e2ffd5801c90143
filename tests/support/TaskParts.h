// SPDX-License-Identifier: MIT
// What surrounds the tools for whole goals: a screen that answers when the test lets it, deciders that follow a script.
#pragma once

#include "Quorvell/actions/ActionObserver.h"
#include "Quorvell/actions/ActionRunner.h"
#include "Quorvell/actions/tasks/GoalOutcome.h"
#include "Quorvell/actions/tasks/StepDeciding.h"
#include "Quorvell/session/ports/LiveMessageText.h"
#include "Quorvell/session/tools/ToolReply.h"
#include "QuorvellCore/automation/ActionExecutionGate.h"
#include "VirtualScheduler.h"
#include "WrittenLog.h"

#include <deque>
#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace quorvell::test {

/// Buttons of these names, "e1" being the first.
inline ScreenLook lookWith(std::initializer_list<const char*> buttons, std::int64_t revision = 1)
{
    ScreenLook look;
    look.observation.revision = revision;
    look.observation.app = "Shop";
    look.observation.window = "Example Shop";
    for (const char* label : buttons) {
        const std::string id = "e" + std::to_string(look.elements.size() + 1);
        look.observation.candidates.push_back({id, "AXButton", label, "", true, false, false});
        look.elements.emplace_back();
    }
    return look;
}

/// Runs nothing: gives the results that it was told to, one for each action, a moment later.
class ScriptedRunner : public ActionRunner {
public:
    explicit ScriptedRunner(Scheduler& scheduler)
        : m_scheduler(scheduler)
    {
    }

    void run(ProposedAction action, std::function<void(ActionResult)> answer) override
    {
        actions.push_back(std::move(action));
        if (isHeld)
            return held.push_back(std::move(answer));
        ActionResult result{.isVerified = true, .after = screen};
        if (!results.empty()) {
            result = std::move(results.front());
            results.pop_front();
        }
        m_scheduler.post([answer = std::move(answer), result = std::move(result)] { answer(result); });
    }
    void look(const LookWish& wish, Screen::Answer<ScreenLook> answer) override
    {
        ++looks;
        ScreenLook seen = screen;
        if (wish.image != LookWish::Image::none && hasImages)
            seen.image = Bytes{1};
        m_scheduler.post([this, answer = std::move(answer), seen = std::move(seen)] {
            problem.empty() ? answer(seen) : answer(ScreenProblem{problem});
        });
    }

    ScreenLook screen = lookWith({"Orders", "Search"});
    std::string problem;
    bool hasImages = true;
    bool isHeld = false;
    std::deque<ActionResult> results; ///< Without one: done and seen to work.
    std::vector<ProposedAction> actions;
    std::vector<std::function<void(ActionResult)>> held;
    int looks = 0;

private:
    Scheduler& m_scheduler;
};

class ScriptedDeciding : public StepDeciding {
public:
    explicit ScriptedDeciding(Scheduler& scheduler)
        : m_scheduler(scheduler)
    {
    }

    StepWish ask(StepDecider, DecisionContext context, std::function<void(const StepAnswer&)> answer) override
    {
        contexts.push_back(std::move(context));
        auto wanted = std::make_shared<bool>(true);
        if (!answers.empty()) { // Without one the decider takes its time.
            m_scheduler.post([wanted, answer, decided = answers.front()] {
                if (*wanted)
                    answer(decided);
            });
            answers.pop_front();
        }
        return StepWish([wanted, this] {
            *wanted = false;
            ++ended;
        });
    }

    std::deque<StepAnswer> answers;
    std::vector<DecisionContext> contexts;
    int ended = 0; ///< Wishes that are over, answered or not.

private:
    Scheduler& m_scheduler;
};

/// What a call was answered, in order.
class Answers {
public:
    ToolReply reply()
    {
        return ToolReply([this](const Json& result) { all.push_back(result); });
    }
    std::string last(const char* key) const { return all.empty() ? "" : readString(all.back(), key).value_or(""); }

    std::vector<Json> all;
};

struct TaskParts {
    static std::string freshID() { return "ticket"; }

    VirtualScheduler scheduler;
    WrittenLog log;
    ScriptedRunner actions{scheduler};
    ScriptedDeciding deciding{scheduler};
    ActionExecutionGate gate{freshID};
    Answers answers;
    std::vector<std::string> events;
    std::function<void(LiveMessageText)> tell = [this](
                                                    const LiveMessageText& message) { events.push_back(message.text); };
    GoalOutcome::Telling telling{[](const ScreenLook& look) { return "screen " + look.observation.window; },
        [](const std::string& text) { return "<<" + text + ">>"; }};
};

} // namespace quorvell::test
