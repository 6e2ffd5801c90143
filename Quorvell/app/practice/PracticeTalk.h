// SPDX-License-Identifier: MIT
// Somebody tries the assistant in a practice world: types goals and answers, and sees what is done.
#pragma once

#include "Quorvell/app/terminal/LineSource.h"
#include "Quorvell/practice/helper/PracticeActor.h"
#include "Quorvell/practice/run/PracticeRun.h"
#include "Quorvell/practice/run/RecordedSteps.h"
#include "Quorvell/practice/screen/PracticeScreen.h"
#include "Quorvell/practice/world/PracticeWorld.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace quorvell {

/// Main thread.
class PracticeTalk {
public:
    struct Ports {
        Scheduler& scheduler;
        LineSource& lines;
        std::function<void(const std::string& text)> tell;
        std::function<void(int exitCode)> end;
    };

    PracticeTalk(Ports ports, PracticeDescription description, const PracticeActorMaker& make);

    void begin();
    /// What is being done ends after its step; where nothing is done, all ends.
    void interrupt();

private:
    void readNext();
    void take(const TypedMessage& message);
    void beginGoal(const std::string& goal);
    void ask(const std::string& question, std::function<void(std::string)> answer);
    void decide(const DecisionContext& context, const PracticeRun::DecisionReport& report);
    void ended(const PracticeScore& score);
    void leave();
    std::string screenText();
    PracticeRun::Watch watch();

    Ports m_ports;
    PracticeWorld m_world;
    PracticeScreen m_screen;
    SessionTime m_begun;
    std::unique_ptr<PracticeActor> m_actor;
    PracticeRun m_run;
    std::optional<RecordedSteps> m_recorded; ///< Where the goal is the file's own.
    std::function<void(std::string)> m_answer; ///< Of an open question.
    bool m_isReading = false;
    bool m_isBusy = false;
    bool m_hasLeft = false;
};

} // namespace quorvell
