// SPDX-License-Identifier: MIT
#include "Understanding/skills/alarms/AlarmQuestions.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Json.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/Pointing.h"
#include "Understanding/dialogue/SeriesWords.h"
#include "Understanding/skills/alarms/AlarmCalls.h"
#include "Understanding/skills/alarms/AlarmLine.h"
#include "Understanding/skills/alarms/AlarmSeries.h"
#include "Understanding/skills/alarms/AlarmSeriesSteps.h"
#include "Understanding/skills/alarms/AlarmTraits.h"
#include "Understanding/skills/alarms/TimerLength.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/time/TimeChoicePicker.h"
#include "Understanding/time/TimeWords.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>
#include <utility>

namespace quorvell {

namespace {

using AlarmStep = std::optional<RuleStep>;

/// A bare hour is one here.
std::string answerAsTime(const std::string& core)
{
    static const Pattern filler(
        "^(?:(?:for|at|to|make it|let['’]?s say|say|set it (?:for|to)|i want it (?:at|for))\\s+)+", Pattern::caseless);
    static const Pattern hour(
        "^(?:\\d{1,2}(?:[:.]\\d{2})?|one|two|three|four|five|six|seven|eight|nine|ten|eleven|twelve)$",
        Pattern::caseless);
    const std::string time = filler.replaceAll(AlarmLine::withPlainHalves(core), "");
    return hour.find(time) ? "at " + time : time;
}

AlarmStep takeAlarmTime(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings& around)
{
    const Json waiting = parseJson(asked.arguments).value_or(Json::object());
    const std::string said = readString(waiting, "text").value_or(""); // Of the days, where hours were lacking.
    const std::string answer = answerAsTime(core) + (said.empty() ? "" : " " + said);
    const auto several =
        AlarmSeries::isMeant(answer) ? AlarmSeries::times(answer, 0, around) : std::vector<std::string>();
    if (const bool isWaking = memory.alarms.isWaking; !several.empty())
        return AlarmSeriesSteps::begin(several, asked.task, isWaking, std::move(memory), around);
    static const Pattern denied(
        "\\b(?:not|instead of|rather than)\\b", Pattern::caseless); // Two hours, of which one is meant.
    if (denied.find(answer) || !SpokenPhrase::read(answer, around))
        return std::nullopt;
    const auto call = AlarmCalls{around}.setAlarm(asked.settled.completing(answer, around), asked.task);
    return RuleStep{call, std::move(memory)};
}

/// Neither of the hours that were offered: "no, half past nine". The day that both are on stays.
AlarmStep takeOtherTime(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings& around)
{
    static const Pattern no("^(?:(?:no|nope|neither|actually|i mean|i meant)[,.]?\\s+)+", Pattern::caseless);
    const std::string answer = answerAsTime(no.replaceAll(core, ""));
    if (!TimeWords::isTime(answer, around) || asked.choices.empty() || !asked.repeat.empty())
        return std::nullopt;
    const DateParts day = asked.choices.front().date.wholeDay();
    const bool isOneDay =
        std::ranges::all_of(asked.choices, [&](const TimeChoice& choice) { return choice.date.wholeDay() == day; });
    const SettledTime settled{.day = isOneDay ? day.text() : ""};
    const auto call = AlarmCalls{around}.setAlarm(settled.completing(answer, around), asked.task);
    return RuleStep{call, std::move(memory)};
}

AlarmStep takeAlarmChoice(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings& around)
{
    const auto date = TimeChoicePicker::pick(SpokenPhrase::withDigits(core), asked.choices);
    if (!date)
        return takeOtherTime(core, asked, std::move(memory), around);
    const auto call = AlarmCalls{around}.setAlarmAt(asked.task, *date, asked.repeat);
    return RuleStep{call, std::move(memory)};
}

AlarmStep takeRuleOfNew(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings& around)
{
    const Json arguments = parseJson(asked.arguments).value_or(Json::object());
    const std::string time = readString(arguments, "text").value_or("");
    static const Pattern days("^(?:on |every )?((?:mon|tues|wednes|thurs|fri|satur|sun)day\\b.*)$", Pattern::caseless);
    const auto named = days.find(core);
    const std::string rule =
        AlarmTraits::ruleInWords(AlarmTraits::ruleInTime(named ? "every " + named->texts[0] : core));
    const auto phrase = SpokenPhrase::read("at 6 am " + rule, around);
    if (!phrase || !phrase->repeatRule)
        return std::nullopt;
    const auto call = AlarmCalls{around}.setAlarm(trimmed(time + " " + rule), asked.task);
    return RuleStep{call, std::move(memory)};
}

AlarmStep takeLength(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings& around)
{
    static const Pattern bare("^(?:for )?(\\d{1,3})$", Pattern::caseless);
    const auto minutes = bare.find(SpokenPhrase::withDigits(core));
    const auto length = TimerLength::read(minutes ? minutes->texts[0] + " minutes" : core);
    if (!length)
        return std::nullopt;
    return RuleStep{AlarmCalls{around}.setTimer(length->length, asked.task), std::move(memory)};
}

AlarmStep takeOne(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings& around)
{
    const auto thing = Pointing::at(memory.found, core, around);
    if (!thing)
        return std::nullopt;
    return RuleStep{ToolCalls::chosen(asked.tool, asked.arguments, thing->id), std::move(memory)};
}

AlarmStep takeScope(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings&)
{
    const Wish::Scope scope = SeriesWords::answer(core);
    if (scope == Wish::Scope::open)
        return std::nullopt;
    Json arguments = parseJson(asked.arguments).value_or(Json::object());
    arguments["series"] = scope == Wish::Scope::all;
    return RuleStep{ToolRequest{asked.tool, dumpJson(arguments)}, std::move(memory)};
}

AlarmStep takeNewTime(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings& around)
{
    const std::string answer = answerAsTime(core);
    if (!SpokenPhrase::read(answer, around))
        return std::nullopt;
    return RuleStep{
        ToolCalls::again(asked.tool, asked.arguments, "later", SpokenPhrase::withDigits(answer)), std::move(memory)};
}

AlarmStep takeNewName(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings&)
{
    if (core.empty())
        return std::nullopt;
    return RuleStep{ToolCalls::again(asked.tool, asked.arguments, "task", core), std::move(memory)};
}

} // namespace

const QuestionKind AlarmQuestions::whichTime{takeAlarmChoice};
const QuestionKind AlarmQuestions::when{takeAlarmTime};
const QuestionKind AlarmQuestions::howOften{takeRuleOfNew};
const QuestionKind AlarmQuestions::length{takeLength};
const QuestionKind AlarmQuestions::whichOne{takeOne};
const QuestionKind AlarmQuestions::occurrences{takeScope};
const QuestionKind AlarmQuestions::newTime{takeNewTime};
const QuestionKind AlarmQuestions::newName{takeNewName};

} // namespace quorvell
