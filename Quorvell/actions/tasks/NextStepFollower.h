// SPDX-License-Identifier: MIT
// Takes the step that the model named for after the one it asked for, where that one was seen to work.
#pragma once

#include "Quorvell/actions/ActionRunner.h"
#include "Quorvell/actions/tasks/StepDeciding.h"
#include "QuorvellCore/automation/decisions/AutomationHistory.h"
#include "QuorvellCore/automation/engine/pim/PimSelector.h"
#include "QuorvellCore/text/Json.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// Main thread; what it borrows must outlive it. The selector finds the control on the screen that is there now, since
/// ids of the look before mean nothing any more; only clicks and scrolls that it is sure of are taken, judged and run
/// like any other action.
class NextStepFollower {
public:
    struct Ports {
        ActionRunner& actions;
        StepDeciding& deciding;
        StepDecider decider; ///< Empty: no step is followed.
    };
    struct Wish {
        std::string callID{}; ///< Of the call whose action was verified.
        Json then{}; ///< As the model gave it: {"tool", "arguments"}, or words.
        std::string task{}; ///< The goal; may be empty.
        AutomationObservation before{}; ///< On which the ids in `then` were chosen.
        ScreenLook screen{}; ///< As it is now.
        std::vector<AutomationHistory> history{};
    };
    /// Nothing where no step was taken: the model chooses.
    using Answer = std::function<void(std::optional<ActionResult>)>;

    explicit NextStepFollower(Ports ports);
    ~NextStepFollower();
    NextStepFollower(const NextStepFollower&) = delete;
    NextStepFollower& operator=(const NextStepFollower&) = delete;

    /// Answers exactly once. A step that is still sought is given up, and answered with nothing.
    void follow(Wish wish, Answer answer);
    /// The user stopped, or spoke: what is sought is given up.
    void giveUp();

    /// The step in words; empty where it names none.
    static std::string inWords(const Json& then, const AutomationObservation& before);
    /// For PimNextStep::selector.
    static StepDecider by(PimSelector selector);

private:
    struct Sought;
    void decided(const StepAnswer& answer);

    Ports m_ports;
    std::shared_ptr<Sought> m_sought; ///< Null while none is.
};

} // namespace quorvell
