// SPDX-License-Identifier: MIT
#include "Quorvell/actions/tasks/GoalOutcome.h"

#include "QuorvellCore/live/prompt/QuorvellPrompt.h"

namespace quorvell {

namespace {

constexpr const char* adviceOnYes =
    "Nothing more is done until they have answered. Ask the question word for word and wait; after a clear yes call "
    "confirm_action, and the task goes on by itself. Do none of its steps meanwhile.";
constexpr const char* adviceOnUnproven = "It is not certain that it worked: look at the screen, and don't tell them it "
                                         "is done unless you see it.";

std::string count(std::size_t steps)
{
    return steps == 1 ? "1 step" : std::to_string(steps) + " steps";
}

} // namespace

ToolStatus GoalOutcome::status() const
{
    switch (kind) {
    case Kind::finished:
        return ToolStatus::finished;
    case Kind::needsYes:
        return ToolStatus::needsConfirmation;
    case Kind::needsUser:
        return ToolStatus::needsUser;
    case Kind::unproven: // Never told as finished.
    case Kind::gaveUp:
        return ToolStatus::gaveUp;
    case Kind::stopped:
        return ToolStatus::stopped;
    }
    return ToolStatus::gaveUp;
}

/// For the user as much as for the model, but for the one that is to be asked first.
std::string GoalOutcome::message() const
{
    const std::string after = steps.empty() ? "Nothing was done" : "I got as far as " + count(steps.size());
    switch (kind) {
    case Kind::finished:
        return "It's done.";
    case Kind::unproven:
        return steps.empty() ? "Nothing had to be done on the screen. Please check that it is as you want it."
                             : "I've done what there was to do, but nothing on the screen shows that it worked. Please "
                               "check.";
    case Kind::needsYes:
        return adviceOnYes;
    case Kind::needsUser:
        return after + ", then I need you.";
    case Kind::gaveUp:
        return after + ". " + reason;
    case Kind::stopped:
        return steps.empty() ? "Stopped before anything was done." : "Stopped after " + count(steps.size()) + ".";
    }
    return {};
}

std::string GoalOutcome::stepLines() const
{
    std::string lines;
    for (std::size_t index = 0; index < steps.size(); ++index) {
        const AutomationHistory& step = steps[index];
        lines += std::to_string(index + 1) + ". " + step.operation + (step.target.empty() ? "" : " " + step.target)
            + (step.verified ? ": seen to work\n" : ": not seen to work\n");
    }
    return engineWords.empty() ? lines : lines + "The engine says: " + engineWords + "\n";
}

ToolResult GoalOutcome::result(const Telling& telling) const
{
    ToolResult result(status());
    if (!question.empty())
        result.ask(question);
    result.advise(message());
    if (kind == Kind::unproven)
        result.add("advice", adviceOnUnproven);
    else if (!advice.empty())
        result.add("advice", advice);
    Json list = Json::array();
    for (const AutomationHistory& step : steps)
        list.push_back({{"tool", step.operation}, {"verified", step.verified}});
    result.add("steps", std::move(list)).add("questions", questions);
    if (const std::string details = stepLines(); !details.empty())
        result.add("details", telling.fenced(details));
    if (screen)
        result.add("screen", telling.screen(*screen));
    return result;
}

std::string GoalOutcome::event(const Telling& telling) const
{
    const std::string prefix = std::string(QuorvellPrompt::eventPrefix) + " The task that do_task began ";
    if (kind == Kind::needsYes)
        return prefix + "needs a yes: " + question + " " + message();
    std::string text = prefix + "is over. " + message();
    if (kind == Kind::unproven)
        text += std::string(" ") + adviceOnUnproven;
    if (!reason.empty() && kind != Kind::gaveUp)
        text += " " + reason;
    if (!advice.empty())
        text += " " + advice;
    const std::string details = stepLines();
    return text + " Look at the screen before you do anything more on it." + (details.empty() ? "" : "\n")
        + (details.empty() ? "" : telling.fenced(details));
}

} // namespace quorvell
