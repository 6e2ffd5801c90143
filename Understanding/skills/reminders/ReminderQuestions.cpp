// SPDX-License-Identifier: MIT
#include "Understanding/skills/reminders/ReminderQuestions.h"

#include "Understanding/dialogue/Pointing.h"
#include "Understanding/skills/reminders/ReminderCalls.h"
#include "Understanding/skills/reminders/ReminderIntent.h"
#include "Understanding/skills/reminders/TaskWords.h"
#include "Understanding/time/SpokenMoment.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/time/SpokenWhen.h"
#include "Understanding/time/TimeChoicePicker.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace quorvell {

namespace {

using Step = std::optional<RuleStep>;

Step takeTime(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings& around)
{
    const std::string time = ReminderIntent::timeAnswer(core);
    if (!SpokenPhrase::read(time, around))
        return std::nullopt;
    if (!asked.tool.empty())
        return RuleStep{
            ToolCalls::again(asked.tool, asked.arguments, "later", SpokenPhrase::withDigits(time)), std::move(memory)};
    // The task as it was understood: what was wrong with the time is no longer in it.
    const auto task = TaskWords::of(asked.task, memory.request);
    const std::string request = task.text.empty() ? memory.request : "remind me " + task.link + " " + task.text;
    return RuleStep{ReminderCalls{around}.set(request + " " + time, asked.repeat), std::move(memory)};
}

Step takeChoice(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings& around)
{
    const auto phrase = SpokenPhrase::read(core, around);
    const auto moment = SpokenMoment::read(core, around);
    if (phrase && phrase->hasTime && !phrase->isAmbiguous() && moment && moment->namesDay)
        return takeTime(core, asked, std::move(memory), around);
    const auto date = TimeChoicePicker::pick(SpokenPhrase::withDigits(core), asked.choices);
    if (!date)
        return std::nullopt;
    return RuleStep{asked.tool.empty() ? ReminderCalls{around}.setAt(asked.task, *date, asked.repeat)
                                       : ToolCalls::again(asked.tool, asked.arguments, "later", date->text()),
        std::move(memory)};
}

Step takeTask(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings& around)
{
    const std::string task = ReminderIntent::taskAnswer(core);
    if (task.empty() || !asked.date)
        return std::nullopt;
    return RuleStep{ReminderCalls{around}.setAt(task, *asked.date, asked.repeat), std::move(memory)};
}

Step takeWhole(const std::string& core, const PendingQuestion&, RequestMemory memory, const RuleSurroundings& around)
{
    memory.request = "remind me " + core;
    const auto call = ReminderCalls{around}.set(memory.request);
    return RuleStep{call, std::move(memory)};
}

Step takeReminder(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings& around)
{
    const auto reminder = Pointing::at(memory.found, core, around);
    if (!reminder)
        return std::nullopt;
    return RuleStep{ToolCalls::chosen(asked.tool, asked.arguments, reminder->id), std::move(memory)};
}

bool areOnOneDay(const std::vector<TimeChoice>& choices)
{
    return std::ranges::all_of(choices, [&](const TimeChoice& choice) {
        const DateParts& first = choices.front().date;
        return !choice.date.allDay && choice.date.year == first.year && choice.date.month == first.month
            && choice.date.day == first.day;
    });
}

} // namespace

const QuestionKind ReminderQuestions::whichTime{takeChoice};
const QuestionKind ReminderQuestions::when{takeTime};
const QuestionKind ReminderQuestions::task{takeTask};
const QuestionKind ReminderQuestions::whole{takeWhole};
const QuestionKind ReminderQuestions::whichReminder{takeReminder};

std::string ReminderQuestions::wordedChoices(const std::vector<TimeChoice>& choices)
{
    if (choices.empty())
        return "At what time do you mean?";
    const bool oneDay = areOnOneDay(choices);
    std::string reply = "Do you mean ";
    for (std::size_t index = 0; index < choices.size(); ++index) {
        if (index > 0)
            reply += index + 1 < choices.size() ? ", " : oneDay ? " or " : ", or ";
        reply += oneDay ? SpokenWhen::timeOfDay(choices[index].date) : SpokenWhen::words(choices[index].when);
    }
    return reply + "?";
}

} // namespace quorvell
