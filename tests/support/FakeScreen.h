// SPDX-License-Identifier: MIT
// A screen that is what a test makes of it: numbers its elements anew at each look, answers later, notes what is done.
#pragma once

#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/surface/Screen.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace quorvell {

class FakeScreen : public Screen {
public:
    using Effect = std::function<ScreenOutcome(const ScreenAction&)>;

    explicit FakeScreen(Scheduler& scheduler)
        : m_scheduler(scheduler)
    {
        look_.observation.app = "Mail";
        look_.observation.window = "Inbox";
    }

    AutomationCandidate& add(std::string role, std::string label, std::string value = "")
    {
        look_.observation.candidates.push_back(
            {.role = std::move(role), .label = std::move(label), .value = std::move(value), .enabled = true});
        look_.elements.emplace_back();
        return look_.observation.candidates.back();
    }
    /// The element of this label on the screen as it is now.
    AutomationCandidate* labelled(const std::string& label)
    {
        for (AutomationCandidate& candidate : look_.observation.candidates)
            if (candidate.label == label)
                return &candidate;
        return nullptr;
    }
    /// Of the element that has this id since the latest look.
    AutomationCandidate* withID(const std::string& id)
    {
        for (AutomationCandidate& candidate : look_.observation.candidates)
            if (candidate.id == id)
                return &candidate;
        return nullptr;
    }

    void look(const LookWish& wish, Answer<ScreenLook> answer) override
    {
        ++looks;
        m_scheduler.post([this, wish, answer = std::move(answer)] {
            if (!problem.empty())
                return answer(ScreenProblem{problem});
            ++look_.observation.revision;
            for (std::size_t place = 0; place < look_.observation.candidates.size(); ++place)
                look_.observation.candidates[place].id =
                    std::to_string(look_.observation.revision * 100 + static_cast<std::int64_t>(place));
            ScreenLook seen = look_;
            if (wish.image != LookWish::Image::none)
                seen.image = Bytes{1};
            answer(std::move(seen));
        });
    }
    void act(const ScreenAction& action, std::int64_t revision, std::shared_ptr<const ActionCancellation> cancellation,
        std::function<void(ScreenOutcome)> answer) override
    {
        acts.push_back(action);
        const auto* const step = std::get_if<AutomationAction>(&action);
        const AutomationCandidate* const element = step && step->target ? withID(*step->target) : nullptr;
        pressed.push_back(element ? element->label : "");
        wasForLatestLook = wasForLatestLook && revision == look_.observation.revision;
        m_acting.push_back(m_scheduler.after(duration, [this, action, cancellation, answer = std::move(answer)] {
            answer(cancellation->isCancelled() ? ScreenOutcome{ScreenOutcome::Kind::stopped} : effect(action));
        }));
    }
    void read(std::size_t from, Answer<ScreenText> answer) override { answer(ScreenText{text.substr(from), {}}); }
    void find(const std::string&, Answer<std::vector<std::string>> answer) override { answer(std::vector{text}); }
    void listTabs(Answer<std::vector<ScreenTab>> answer) override { answer(tabs); }
    void point(const std::string&, std::function<void(ScreenOutcome)> answer) override { answer({}); }
    void pointAtSpot(double, double, std::function<void(ScreenOutcome)> answer) override { answer({}); }
    void clearPointer() override { }

    ScreenLook look_; ///< As it is now.
    Effect effect = [](const ScreenAction&) { return ScreenOutcome{}; };
    std::chrono::milliseconds duration{10}; ///< Of carrying out an action.
    std::string problem; ///< Of looking; empty: none.
    std::vector<ScreenAction> acts;
    std::vector<std::string> pressed; ///< The labels of what they were done to, at that time.
    bool wasForLatestLook = true; ///< All of them.
    int looks = 0;
    std::string text;
    std::vector<ScreenTab> tabs;

private:
    Scheduler& m_scheduler;
    std::vector<TimerHandle> m_acting;
};

} // namespace quorvell
