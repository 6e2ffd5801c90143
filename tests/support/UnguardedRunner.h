// SPDX-License-Identifier: MIT
// Does whatever is proposed: what a guard keeps from happening is what happens here.
#pragma once

#include "Quorvell/actions/ActionRunner.h"

#include <memory>
#include <utility>

namespace quorvell::test {

/// Asks first where its test says so.
class UnguardedRunner : public ActionRunner {
public:
    explicit UnguardedRunner(Screen& screen)
        : m_screen(screen)
    {
    }

    std::function<std::string(const ProposedAction&)> questionFor; ///< Empty: none.
    std::vector<ProposedAction> proposed;

    void run(ProposedAction action, std::function<void(ActionResult)> answer) override
    {
        proposed.push_back(action);
        const std::string question = questionFor ? questionFor(action) : std::string();
        if (question.empty())
            return act(std::move(action), std::move(answer));
        m_pending = std::move(action);
        ActionResult asked{ActionResult::Kind::needsYes};
        asked.question = question;
        answer(asked);
    }
    void settle(const std::string& words, std::function<void(ActionResult)> answer)
    {
        if (words == "yes" && m_pending)
            return act(*std::exchange(m_pending, std::nullopt), std::move(answer));
        m_pending.reset();
        answer({ActionResult::Kind::refused});
    }
    void look(const LookWish& wish, Screen::Answer<ScreenLook> answer) override
    {
        m_screen.look(wish, [this, answer](auto seen) {
            if (auto* look = std::get_if<ScreenLook>(&seen))
                m_before = look->observation;
            answer(std::move(seen));
        });
    }

private:
    void act(ProposedAction action, std::function<void(ActionResult)> answer)
    {
        const auto expected = action.expected.value_or(Postcondition{Postcondition::Kind::changed, {}});
        const auto acted = [this, expected, answer](const ScreenOutcome& outcome) {
            LookWish wish;
            wish.wait = LookWish::Wait::settled;
            m_screen.look(wish, [this, expected, outcome, answer](auto seen) {
                ActionResult result;
                result.kind = outcome.kind == ScreenOutcome::Kind::done ? ActionResult::Kind::done
                    : outcome.kind == ScreenOutcome::Kind::stopped      ? ActionResult::Kind::stopped
                    : outcome.kind == ScreenOutcome::Kind::unknown      ? ActionResult::Kind::unknown
                                                                        : ActionResult::Kind::failed;
                result.words = outcome.problem;
                result.after = std::get<ScreenLook>(std::move(seen));
                result.isVerified = expected.verified(m_before, result.after->observation);
                answer(std::move(result));
            });
        };
        m_screen.act(action.action, action.revision, std::make_shared<ActionCancellation>(), acted);
    }

    Screen& m_screen;
    std::optional<ProposedAction> m_pending;
    AutomationObservation m_before;
};

} // namespace quorvell::test
