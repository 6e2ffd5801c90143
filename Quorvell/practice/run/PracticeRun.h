// SPDX-License-Identifier: MIT
// Somebody decides, step by step, in a practice world, and somebody answers the questions: what came of it.
#pragma once

#include "Quorvell/actions/ActionRunner.h"
#include "Quorvell/practice/run/PracticeScore.h"
#include "Quorvell/practice/world/PracticeWorld.h"
#include "QuorvellCore/automation/decisions/AutomationDecision.h"
#include "QuorvellCore/automation/decisions/DecisionContext.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace quorvell {

/// Main thread. One goal after the other; once it is gone, it tells nothing.
class PracticeRun {
public:
    static constexpr int mostSteps = 40;

    using DecisionReport = std::function<void(std::optional<AutomationDecision>)>;
    using ResultReport = std::function<void(ActionResult)>;

    /// Whoever is called answers once, at once or later.
    struct Parts {
        PracticeWorld& world; ///< Behind the runner's screen.
        ActionRunner& runner;
        /// Nothing: there is no further step that it knows.
        std::function<void(const DecisionContext&, DecisionReport)> decide;
        /// What the user says to a question; empty: nothing.
        std::function<void(const std::string& question, std::function<void(std::string)>)> ask;
        /// Gives those words to whoever put the question; what then came of the action.
        std::function<void(const std::string& words, ResultReport)> settle;
        /// Where the words of an action came from.
        std::function<WordOrigins(const AutomationAction&)> originsOf{};
    };

    /// For whoever watches; each may be empty.
    struct Watch {
        std::function<void(const ScreenLook&)> looked{};
        std::function<void(const AutomationDecision&, const AutomationObservation&)> decided{};
        std::function<void(const ActionResult&)> acted{};
        std::function<void(const PracticeConsequence&)> happened{};
    };

    PracticeRun(Parts parts, Watch watch);
    ~PracticeRun();

    /// Not while one is running.
    void begin(const std::string& goal, std::function<void(PracticeScore)> ended);
    /// At once, or after the step that is being carried out. What is being decided or asked is not waited for.
    void stop();

private:
    struct Task;

    Parts m_parts;
    Watch m_watch;
    std::shared_ptr<Task> m_task;
};

} // namespace quorvell
