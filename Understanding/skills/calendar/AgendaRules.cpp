// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/AgendaRules.h"

#include "QuorvellCore/reminders/state/ReminderRepeat.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/calendar/acting/AgendaCalls.h"
#include "Understanding/skills/calendar/acting/AgendaChange.h"
#include "Understanding/skills/calendar/acting/AgendaReply.h"
#include "Understanding/skills/calendar/acting/AgendaTopic.h"
#include "Understanding/skills/calendar/finding/EventLookup.h"
#include "Understanding/skills/calendar/reading/CalendarWords.h"
#include "Understanding/skills/calendar/reading/EventTitle.h"
#include "Understanding/time/SpokenLength.h"
#include "Understanding/time/SpokenMove.h"
#include "Understanding/time/SpokenWhen.h"

#include <nlohmann/json.hpp>

#include <utility>
#include <vector>

namespace quorvell {

namespace {

using Step = std::optional<RuleStep>;

constexpr const char* repeatUnknown =
    "I can repeat an event every day, every weekday, on days of every week, every month or every year, and in no other "
    "way. Please say it in one of these ways.";

DateParts atClockOf(DateParts day, const DateParts& clock)
{
    day.hour = clock.hour;
    day.minute = clock.minute;
    day.allDay = false;
    return day;
}

/// What comes every day or week has an hour, and so has what is in the morning or lasts two hours. A day alone is put
/// in as all of it, which is said.
bool lacksTime(const AgendaIntent& intent)
{
    static const Pattern likeAnother(
        "^same\\b", Pattern::caseless); // "The same class on sunday" has its hour somewhere.
    if (intent.isPartOfDay || likeAnother.find(intent.title))
        return !intent.hasTime() || intent.isPartOfDay;
    if (intent.hasTime() || intent.end || intent.isWholeDay)
        return false;
    if (intent.minutes > 0 || (intent.isUnasked && !EventTitle::takesDays(intent.title)))
        return true;
    const auto repeat = ReminderRepeat::fromStored(intent.repeat);
    return repeat && repeat->kind != ReminderRepeat::Kind::monthly && repeat->kind != ReminderRepeat::Kind::yearly;
}

/// ", on Friday the 27th of November", ", every Sunday"; no hour, since that is what is missing.
std::string dayOf(const AgendaIntent& intent)
{
    const auto repeat = ReminderRepeat::fromStored(intent.repeat);
    const std::string often = repeat ? repeat->spoken("en_US") : "";
    if (!often.empty())
        return ", " + lowerCased(often.substr(0, 1)) + often.substr(1);
    return intent.start ? ", " + SpokenWhen::on(SpokenWhen::date(intent.start->wholeDay())) : "";
}

/// What was understood already is kept for the answer: the length in the arguments, the hour as the only choice.
RuleStep askWhen(const AgendaIntent& intent, RequestMemory memory)
{
    PendingQuestion asked{
        .kind = &AgendaRules::when, .task = intent.title, .date = intent.start, .repeat = intent.repeat};
    asked.question = intent.start ? "At what time is it?"
        : intent.repeat.empty()   ? "When is it?"
                                  : "At what time is it?";
    if (intent.clock && !intent.start) {
        asked.question = "On which day is it, at " + SpokenWhen::clock(*intent.clock) + "?";
        asked.choices = {{*intent.clock, ""}};
    } else if (intent.isTimeUnclear) {
        asked.question = "I am not sure which time you mean. When is it?";
    }
    if (intent.isUnasked)
        asked.question = "Should I put " + intent.title + " into your calendar" + dayOf(intent)
            + (intent.start || !intent.repeat.empty() ? "? If so, at what time is it?" : "? If so, when is it?");
    if (intent.minutes > 0)
        asked.arguments = dumpJson(Json{{"minutes", intent.minutes}});
    return RuleStep::asking(std::move(asked), std::move(memory));
}

/// "The 27th is a Friday." Both readings are kept for the answer, at the hour that was clear.
RuleStep askWhichDay(const AgendaIntent& intent, RequestMemory memory)
{
    PendingQuestion asked{.kind = &AgendaRules::whichDay, .task = intent.title, .repeat = intent.repeat};
    for (const DateParts& day : intent.contraryDays) {
        const DateParts start = intent.clock ? atClockOf(day, *intent.clock) : day;
        asked.choices.push_back({start, SpokenWhen::date(day)});
    }
    const DateParts& first = intent.contraryDays.front();
    const bool isOrder = first.day == intent.contraryDays.back().month && first.month == intent.contraryDays.back().day;
    asked.question = std::string(isOrder ? "" : "Day and date do not agree. ") + "Do you mean "
        + asked.choices.front().when + " or " + asked.choices.back().when + "?";
    if (intent.minutes > 0)
        asked.arguments = dumpJson(Json{{"minutes", intent.minutes}});
    return RuleStep::asking(std::move(asked), std::move(memory));
}

/// What comes back is asked for with its time, since nothing else is known of it.
RuleStep askTitle(const AgendaIntent& intent, RequestMemory memory)
{
    PendingQuestion asked{.kind = &AgendaRules::title, .date = intent.start, .repeat = intent.repeat};
    if (intent.isToRepeat && !intent.start)
        asked.question = "What should come back in your calendar, and when? For example: gym every monday at 6 PM.";
    else
        asked.question = "What should I put into your calendar"
            + (intent.start ? ", " + SpokenWhen::on(SpokenWhen::date(*intent.start)) : "") + "?";
    Json kept = Json::object();
    if (intent.end)
        kept["end"] = intent.end->text();
    if (intent.minutes > 0)
        kept["minutes"] = intent.minutes;
    asked.arguments = dumpJson(kept);
    return RuleStep::asking(std::move(asked), std::move(memory));
}

RuleStep askHowOften(const AgendaIntent& intent, RequestMemory memory)
{
    PendingQuestion asked{.kind = &AgendaRules::howOften,
        .question =
            "How often should " + intent.title + " come back: every day, every week, every month or every year?",
        .task = intent.title,
        .date = intent.start};
    if (intent.minutes > 0)
        asked.arguments = dumpJson(Json{{"minutes", intent.minutes}});
    return RuleStep::asking(std::move(asked), std::move(memory));
}

RuleStep addedAs(const AgendaIntent& intent, RequestMemory memory, const AgendaCalls& calls)
{
    if (intent.isRepeatUnknown)
        return {repeatUnknown, std::move(memory)};
    if (intent.isToRepeat && intent.start && !intent.title.empty())
        return askHowOften(intent, std::move(memory));
    if (intent.title.empty() && (intent.start || !intent.isTimeUnclear))
        return askTitle(intent, std::move(memory));
    if (!intent.start || lacksTime(intent)) {
        memory.event = {}; // "It" is the new one already.
        const bool isWhichDay = !intent.start && !intent.contraryDays.empty() && !intent.title.empty();
        return isWhichDay ? askWhichDay(intent, std::move(memory)) : askWhen(intent, std::move(memory));
    }
    auto answer = calls.add(intent);
    const auto* request = std::get_if<ToolRequest>(&answer);
    if ((!intent.isUnasked && intent.ruleEnd.empty()) || !request)
        return {std::move(answer), std::move(memory)};
    const std::string endless = intent.ruleEnd.empty() ? "" : "I cannot let it end " + intent.ruleEnd + " by itself. ";
    return RuleStep::asking(
        {.kind = &ToolResults::confirmation,
            .question = endless + AgendaReply::offer(parseJson(request->arguments).value_or(Json::object())),
            .tool = request->name,
            .arguments = request->arguments},
        std::move(memory));
}

RuleStep listedFor(const AgendaIntent& intent, RequestMemory memory, const AgendaCalls& calls)
{
    memory.talkOf(AgendaCalls::skill);
    memory.asked = RequestMemory::CalendarQuestion::events;
    return {calls.whatsOn(intent.days.value_or(SpokenDays())), std::move(memory)};
}

RuleStep freeTimeFor(const AgendaIntent& intent, RequestMemory memory, const AgendaCalls& calls)
{
    memory.talkOf(AgendaCalls::skill);
    memory.asked = RequestMemory::CalendarQuestion::freeTime;
    memory.freeMinutes = intent.minutes;
    return {calls.findFreeTime(intent.minutes, intent.days), std::move(memory)};
}

/// "And on friday?", after the calendar was asked about another day.
std::optional<AgendaIntent> further(const Wish& wish, const RequestMemory& memory, const RuleSurroundings& around)
{
    if (memory.asked == RequestMemory::CalendarQuestion::none)
        return std::nullopt;
    auto days = SpokenDays::read(wish.when, around);
    if (!days)
        return std::nullopt;
    const bool isFree = memory.asked == RequestMemory::CalendarQuestion::freeTime;
    return AgendaIntent{.kind = isFree ? AgendaIntent::Kind::findTime : AgendaIntent::Kind::list,
        .days = std::move(days),
        .minutes = memory.freeMinutes};
}

AgendaIntent movingBy(const Wish& wish)
{
    const auto length = SpokenLength::read(wish.when);
    return {.kind = AgendaIntent::Kind::move,
        .minutes = length ? length->minutes : wish.minutes,
        .scope = wish.scope,
        .when = length ? std::string() : wish.when};
}

} // namespace

Request AgendaRules::request(AgendaIntent intent)
{
    const bool isMove = intent.kind == AgendaIntent::Kind::move;
    Request request{.answer = [intent](RequestMemory memory, const RuleSurroundings& around) {
        memory.events = {};
        if (intent.remindMinutes >= 0)
            memory.events = {.aim = EventSearch::Aim::remind, .minutes = intent.remindMinutes};
        return answer(intent, std::move(memory), around);
    }};
    if (isMove || intent.kind == AgendaIntent::Kind::cancel)
        request.wish = AgendaChange::wishIn(intent, {});
    if (isMove && intent.title.empty())
        request.about = [intent](const std::string& thing) {
            AgendaIntent named = intent;
            named.title = thing;
            return AgendaRules::request(named);
        };
    return request;
}

RuleStep AgendaRules::answer(const AgendaIntent& wished, RequestMemory memory, const RuleSurroundings& around)
{
    AgendaIntent intent = wished;
    if (intent.days)
        intent.days = CalendarWords::asMeant(*intent.days, around);
    const AgendaCalls calls{around};
    memory.wish = {};
    if (intent.kind != AgendaIntent::Kind::add) // Of an event under way the wish for a reminder stays.
        memory.events = {};
    memory.days = intent.days;
    switch (intent.kind) {
    case AgendaIntent::Kind::list:
        return listedFor(intent, std::move(memory), calls);
    case AgendaIntent::Kind::next:
        if (!intent.title.empty() && !intent.isFurther)
            return EventLookup::begin(
                {.aim = EventSearch::Aim::when,
                    .name = intent.title,
                    .days = intent.days == SpokenDays::ahead(around) ? std::nullopt : intent.days},
                std::move(memory), around);
        memory.wish = AgendaChange::wishIn(intent, memory);
        return {calls.whatsOn(intent.days.value_or(SpokenDays::ahead(around))), std::move(memory)};
    case AgendaIntent::Kind::findTime:
        return freeTimeFor(intent, std::move(memory), calls);
    case AgendaIntent::Kind::add:
        return addedAs(intent, std::move(memory), calls);
    case AgendaIntent::Kind::move:
    case AgendaIntent::Kind::cancel:
        break;
    }
    return AgendaChange::make(intent, std::move(memory), around);
}

RuleStep AgendaRules::offerNew(const EventSearch& search, RequestMemory memory)
{
    memory.events = {};
    const std::string title = withUpperCaseFirst(search.name);
    return RuleStep::asking(
        {.kind = &AgendaRules::when,
            .question = "I found no " + search.name + " in your calendar. Should I put it in? If so, when is it?",
            .task = title},
        std::move(memory));
}

std::optional<RuleStep> AgendaRules::retime(const Wish& wish, RequestMemory memory, const RuleSurroundings& around)
{
    if (const auto asking = further(wish, memory, around))
        return answer(*asking, std::move(memory), around);
    if (memory.asked != RequestMemory::CalendarQuestion::none || memory.event.id.empty())
        return std::nullopt;
    if (!wish.repeat.empty())
        return RuleStep{ruleIsFixed, std::move(memory)};
    if (!wish.from.empty() && !(memory.event.start && SpokenMove::isAt(wish.from, *memory.event.start, around)))
        return RuleStep{AgendaReply::named(memory.event) + ". When should it be instead?", std::move(memory)};
    return answer(movingBy(wish), std::move(memory), around);
}

RuleStep AgendaRules::changeListed(
    const Wish& wish, const FoundThing& event, RequestMemory memory, const RuleSurroundings& around)
{
    AgendaTopic::talkAbout(event, memory);
    AgendaIntent intent{.kind = AgendaIntent::Kind::cancel, .scope = wish.scope};
    if (wish.kind == Wish::Kind::move) {
        intent = movingBy(wish);
        // The time is asked for, and the answer needs a name.
        intent.title = intent.minutes == 0 && intent.when.empty() ? event.title : std::string();
    }
    return answer(intent, std::move(memory), around);
}

} // namespace quorvell
