// SPDX-License-Identifier: MIT
#include "Understanding/skills/reminders/ReminderQuestions.h"

#include "QuorvellCore/text/Json.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/Pointing.h"
#include "Understanding/dialogue/SeriesWords.h"
#include "Understanding/skills/reminders/ReminderCalls.h"
#include "Understanding/skills/reminders/ReminderIntent.h"
#include "Understanding/skills/reminders/TaskWords.h"
#include "Understanding/time/SpokenMoment.h"
#include "Understanding/time/SpokenMove.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/time/SpokenWhen.h"
#include "Understanding/time/TimeChoicePicker.h"
#include "Understanding/words/RequestText.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>
#include <utility>

namespace quorvell {

namespace {

using Step = std::optional<RuleStep>;

/// "When I go to the doctor" is an answer, though one that nobody here can tell the time of.
Step askForTime(const std::string& core, PendingQuestion asked, RequestMemory memory)
{
    static const Pattern occasion(
        "^(?:when|whenever|once|as soon as|before|after|while) (?:i|we|he|she|they|it)\\b", Pattern::caseless);
    if (!occasion.find(core) || !asked.tool.empty())
        return std::nullopt;
    const auto task = TaskWords::of(asked.task, memory.request);
    asked.question = "I can't tell when that is. At what time should I remind you"
        + (task.text.empty() ? "" : " " + task.told()) + "?";
    return RuleStep::asking(std::move(asked), std::move(memory));
}

Step takeTime(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings& around)
{
    // Of all that is no time, only the user's own return is noticed.
    static const Pattern isReturn("^(?:when|once|as soon as|the moment) (?:i|we)(?:['’]m| am| are| get| come| return)"
                                  "(?: back)(?: (?:home|at|to|on)(?: (?:the|my|this) \\w+)?)?$",
        Pattern::caseless);
    if (asked.tool.empty() && !asked.task.empty() && isReturn.find(core))
        return RuleStep{ReminderCalls{around}.setOnReturn(asked.task), std::move(memory)};
    const std::string answer = ReminderIntent::timeAnswer(core);
    const auto phrase = SpokenPhrase::read(answer, around);
    if (!phrase)
        return askForTime(core, asked, std::move(memory));
    const std::string time = asked.settled.completing(answer, around);
    if (!asked.tool.empty())
        return RuleStep{
            ToolCalls::again(asked.tool, asked.arguments, "later", SpokenPhrase::withDigits(time)), std::move(memory)};
    if (!asked.settled.isEmpty() && phrase->task.empty() && !asked.task.empty())
        return RuleStep{ReminderCalls{around}.setTask(asked.task, time), std::move(memory)};
    // The task as it was understood: what was wrong with the time is no longer in it.
    const auto task = TaskWords::of(asked.task, memory.request);
    const std::string request = task.text.empty() ? memory.request : "remind me " + task.linked();
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
    if (const std::string when = ReminderIntent::bareTime(core, around); !when.empty()) { // The hour, and no task.
        PendingQuestion again = asked;
        const SpokenMove to = SpokenMove::read(when, *asked.date, SpokenMove::FarHour::isUsual, around);
        if (to.choices.size() == 1)
            again.date = to.choices.front();
        again.question = "And what should I remind you of then?";
        return RuleStep::asking(std::move(again), std::move(memory));
    }
    return RuleStep{ReminderCalls{around}.setAt(task, *asked.date, asked.repeat), std::move(memory)};
}

Step takeWhole(const std::string& core, const PendingQuestion&, RequestMemory memory, const RuleSurroundings& around)
{
    memory.request = "remind me " + core;
    const auto call = ReminderCalls{around}.set(memory.request);
    return RuleStep{call, std::move(memory)};
}

/// "My tablets", "take my tablets"
Step takeThing(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings& around)
{
    static const Pattern thing(
        "^(?:the|my|our|his|her|their|a|an|some|all|both|two|three|those|these)\\b", Pattern::caseless);
    const std::string answer = ReminderIntent::taskAnswer(core);
    const Json kept = parseJson(asked.arguments).value_or(Json::object());
    const std::string verb = thing.find(answer) ? readString(kept, "verb").value_or("") + " " : "";
    if (answer.empty())
        return std::nullopt;
    memory.request = "remind me to " + verb + core;
    return RuleStep{
        ReminderCalls{around}.setTask(verb.empty() ? answer : RequestText::written(verb + core), asked.settled.clock),
        std::move(memory)};
}

Step takeReminder(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings& around)
{
    const auto reminder = Pointing::at(memory.found, core, around);
    if (!reminder)
        return std::nullopt;
    return RuleStep{ToolCalls::chosen(asked.tool, asked.arguments, reminder->id), std::move(memory)};
}

Step takeOccurrences(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings&)
{
    const Wish::Scope scope = SeriesWords::answer(core);
    if (scope == Wish::Scope::open)
        return std::nullopt;
    Json arguments = parseJson(asked.arguments).value_or(Json::object());
    arguments["series"] = scope == Wish::Scope::all;
    return RuleStep{ToolRequest{asked.tool, dumpJson(arguments)}, std::move(memory)};
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
const QuestionKind ReminderQuestions::task{takeTask, nullptr, true};
const QuestionKind ReminderQuestions::whole{takeWhole};
const QuestionKind ReminderQuestions::whatThatIs{takeThing};
const QuestionKind ReminderQuestions::occurrences{takeOccurrences};
const QuestionKind ReminderQuestions::whichReminder{takeReminder};

std::string ReminderQuestions::wordedDoubt(
    std::string_view unclear, const SettledTime& settled, const std::string& remindYou)
{
    static const Pattern marker("\\b([ap])m$");
    const auto day = DateParts::parse(settled.day);
    const bool isRuleOpen = !settled.rule.empty() && unclear.empty(); // "Every month" lacks its day.
    static const Pattern rare(
        "^(?:every|each) (?!.*\\b(?:and|at|on)\\b).*\\b(?:hour|minute|other|second|third|\\d+)", Pattern::caseless);
    const std::string lead = unclear.empty() ? ""
        : rare.find(unclear)
        ? "I can remind you every day, every week, every month or every year, and not " + std::string(unclear) + ". "
        : "I am not sure what you mean by \"" + std::string(unclear) + "\". ";
    const std::string often = settled.rule.empty() ? "" : " " + settled.rule;
    const auto half = marker.find(settled.clock);
    const std::string clock = settled.clock.empty() ? ""
        : half ? " " + settled.clock.substr(0, settled.clock.size() - 2) + (half->texts[0] == "a" ? "AM" : "PM")
               : " " + settled.clock;
    const bool isClockOpen = settled.clock.empty() && (day || (!settled.rule.empty() && !isRuleOpen));
    if (isClockOpen)
        return lead + "At what time should I " + remindYou + (day ? " " + SpokenWhen::on(SpokenWhen::date(*day)) : "")
            + often + "?";
    if (!day && (!settled.clock.empty() || isRuleOpen))
        return lead + (often.empty() ? "On which day" : "From which day on") + " should I " + remindYou + often + clock
            + "?";
    return lead + "When should I " + remindYou + often + "?";
}

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
