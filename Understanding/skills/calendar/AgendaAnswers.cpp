// SPDX-License-Identifier: MIT
// What is made of the answers to what AgendaRules asks about a new event.
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/calendar/AgendaRules.h"
#include "Understanding/skills/calendar/reading/CalendarWords.h"
#include "Understanding/skills/calendar/reading/DayChoice.h"
#include "Understanding/skills/calendar/reading/EventRepeat.h"
#include "Understanding/skills/calendar/reading/EventWords.h"
#include "Understanding/skills/reminders/ReminderIntent.h"
#include "Understanding/time/SpokenLength.h"
#include "Understanding/time/SpokenMoment.h"
#include "Understanding/time/SpokenMove.h"
#include "Understanding/time/SpokenWhen.h"
#include "Understanding/time/TimeVocabulary.h"

#include <nlohmann/json.hpp>

#include <utility>
#include <vector>

namespace quorvell {

namespace {

DateParts withHourOf(DateParts day, const DateParts& clock)
{
    day.hour = clock.hour;
    day.minute = clock.minute;
    day.allDay = false;
    return day;
}

/// How long it is by that answer; 0 where it does not say.
int minutesOf(const EventWords& said)
{
    constexpr int minutesOfHour = 60;
    if (said.minutes > 0 || !said.start || !said.end || said.start->allDay)
        return said.minutes;
    constexpr int hoursOfDay = 24;
    const int minutes = (said.end->hour - said.start->hour) * minutesOfHour + said.end->minute - said.start->minute;
    return minutes > 0 ? minutes : minutes + hoursOfDay * minutesOfHour;
}

std::optional<RuleStep> takeWhichDay(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings& around)
{
    const auto start = asked.choices.empty() ? std::nullopt : DayChoice::named(core, asked.choices);
    if (!start)
        return std::nullopt;
    const Json arguments = parseJson(asked.arguments).value_or(Json::object());
    return AgendaRules::answer({.kind = AgendaIntent::Kind::add,
                                   .minutes = static_cast<int>(readInteger(arguments, "minutes").value_or(0)),
                                   .title = asked.task,
                                   .start = start,
                                   .repeat = asked.repeat},
        std::move(memory), around);
}

/// A time and nothing else, whatever else it could be a request for.
bool isWhen(const std::string& core, const RuleSurroundings& around)
{
    static const Pattern begins(
        "^(?:at|on|from|between|in the|for|tomorrow|today|tonight|next|noon|half|quarter|the \\d|\\d|"
            + std::string(TimeVocabulary::weekday) + ")",
        Pattern::caseless);
    if (!begins.find(core))
        return false;
    const EventWords said = EventWords::read(core, around);
    return said.title.empty() && said.start && said.repeat.empty();
}

std::optional<RuleStep> takeWhen(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings& around)
{
    static const Pattern asks(
        "^(?:is|are|was|were|does|do|did|what|which|why|who|how|where|when)\\b(?! about)", Pattern::caseless);
    if (asks.find(core)) // "Is that a monday?" names no day for it.
        return std::nullopt;
    static const Pattern danglingFor("\\s*\\bfor$|^for\\s+", Pattern::caseless);
    static const Pattern wholeDay(
        "^(?:(?:it is |it will be |make it |for )?(?:all day|the (?:whole|entire) day|all of it|whole day)"
        "(?: long)?|no (?:time|hour|particular time|specific time)|any ?time|it does not matter|i do not "
        "know(?: yet)?|not sure(?: yet)?|does not matter|without a time|no idea(?: yet)?|(?:that is )?(?:still "
        ")?open|later|tbd)$");
    if (asked.date && asked.repeat.empty() && wholeDay.find(CalendarWords::of(core).plain))
        return AgendaRules::answer(
            {.kind = AgendaIntent::Kind::add, .title = asked.task, .start = asked.date->wholeDay(), .isWholeDay = true},
            std::move(memory), around);
    static const Pattern more(
        "^(?:it is |and )?(?:with|about|regarding) \\S", Pattern::caseless); // "With the landlord"
    std::string words = ReminderIntent::timeAnswer(core);
    const EventWords said = EventWords::read(words, around);
    if (more.find(core) && !said.start && !said.isTimeUnclear)
        return AgendaRules::answer({.kind = AgendaIntent::Kind::add,
                                       .title = trimmed(asked.task + " " + core),
                                       .start = asked.date,
                                       .repeat = asked.repeat,
                                       .isPartOfDay = asked.date.has_value()},
            std::move(memory), around);
    const int length = minutesOf(said);
    if (const auto lasting = said.minutes > 0 ? SpokenLength::read(words) : std::nullopt)
        words = trimmed(danglingFor.replaceAll(lasting->rest, ""));
    if (asked.date && said.end && said.start && !said.start->allDay) // "From 2 to 4 pm"
        words = "at " + SpokenWhen::clock(*said.start);
    const auto moment = SpokenMoment::read(words, around);
    const auto to = asked.date ? SpokenMove::read(words, *asked.date, SpokenMove::FarHour::isUsual, around)
                               : SpokenMove{moment ? std::vector{moment->date} : std::vector<DateParts>()};
    if (to.choices.size() != 1) {
        const EventWords answer = EventWords::read(words, around); // "From friday to sunday."
        if (asked.date || !answer.start || !answer.title.empty())
            return std::nullopt;
        return AgendaRules::answer(
            {.kind = AgendaIntent::Kind::add, .title = asked.task, .start = answer.start, .end = answer.end},
            std::move(memory), around);
    }
    DateParts start = to.choices.front();
    if (start.allDay && !asked.choices.empty())
        start = withHourOf(start, asked.choices.front().date);
    if (!asked.date) // "At 10", of what comes every sunday.
        start = EventRepeat::firstFrom(start, asked.repeat, around);
    const Json arguments = parseJson(asked.arguments).value_or(Json::object());
    const int minutes = static_cast<int>(readInteger(arguments, "minutes").value_or(0));
    return AgendaRules::answer({.kind = AgendaIntent::Kind::add,
                                   .minutes = length > 0 ? length : minutes,
                                   .title = asked.task,
                                   .start = start,
                                   .repeat = asked.repeat},
        std::move(memory), around);
}

std::optional<RuleStep> takeHowOften(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings& around)
{
    static const Pattern never("^(?:never|not at all|only once|once|just once|no|it does not)$");
    const std::string plain = CalendarWords::of(core).plain;
    const std::string repeat = asked.date ? EventRepeat::stored(plain, *asked.date, around) : "";
    if (repeat.empty() && !never.find(plain))
        return std::nullopt;
    const Json arguments = parseJson(asked.arguments).value_or(Json::object());
    return AgendaRules::answer({.kind = AgendaIntent::Kind::add,
                                   .minutes = static_cast<int>(readInteger(arguments, "minutes").value_or(0)),
                                   .title = asked.task,
                                   .start = asked.date,
                                   .repeat = repeat},
        std::move(memory), around);
}

std::optional<RuleStep> takeTitle(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings& around)
{
    const Json arguments = parseJson(asked.arguments).value_or(Json::object());
    AgendaIntent intent{.kind = AgendaIntent::Kind::add,
        .minutes = static_cast<int>(readInteger(arguments, "minutes").value_or(0)),
        .title = ReminderIntent::taskAnswer(core),
        .start = asked.date,
        .end = ToolResults::dateIn(arguments, "end"),
        .repeat = asked.repeat};
    EventWords said = EventWords::read(ReminderIntent::taskAnswer(core), around);
    const bool isTimed = said.start || !said.repeat.empty() || said.isTimeUnclear || said.clock;
    if (!asked.date && asked.repeat.empty() && isTimed && !said.title.empty()) // "Gym, every monday at 6 pm."
        intent = AgendaIntent::ofNew(std::move(said));
    return AgendaRules::answer(intent, std::move(memory), around);
}

} // namespace

const QuestionKind AgendaRules::when{takeWhen, isWhen};
const QuestionKind AgendaRules::whichDay{takeWhichDay};
const QuestionKind AgendaRules::howOften{takeHowOften};
const QuestionKind AgendaRules::title{takeTitle};

} // namespace quorvell
