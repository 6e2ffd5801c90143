// SPDX-License-Identifier: MIT
// Who works a practice screen for the user: judges, asks, acts and decides.
#pragma once

#include "Quorvell/actions/ActionRunner.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/practice/run/PracticeRun.h"
#include "Quorvell/surface/Screen.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace quorvell {

/// Main thread.
class PracticeActor {
public:
    virtual ~PracticeActor() = default;

    virtual ActionRunner& runner() = 0;
    /// Whatever the user types is theirs: a goal, or the answer to a question.
    virtual void userSaid(const std::string& words) = 0;
    /// After an answer: what then came of the action that waited for it.
    virtual void settle(PracticeRun::ResultReport report) = 0;
    virtual void decide(const DecisionContext& context, PracticeRun::DecisionReport report) = 0;
    /// The user wants no more questions of the kind that is open. What is asked no more, a sentence; empty where it is
    /// of a kind that is always asked.
    virtual std::string switchOffQuestion() { return {}; }
    /// The user wants it to stop.
    virtual void stop() = 0;
};

/// `applications` are the names of those that are installed.
using PracticeActorMaker = std::function<std::unique_ptr<PracticeActor>(
    Screen& screen, Scheduler& scheduler, const std::vector<std::string>& applications)>;

} // namespace quorvell
