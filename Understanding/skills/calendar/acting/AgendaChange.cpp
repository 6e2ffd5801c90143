// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/acting/AgendaChange.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/Pointing.h"
#include "Understanding/dialogue/SeriesWords.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/calendar/acting/AgendaCalls.h"
#include "Understanding/skills/calendar/acting/AgendaReply.h"
#include "Understanding/skills/calendar/reading/CalendarWords.h"
#include "Understanding/skills/calendar/reading/DayChoice.h"
#include "Understanding/skills/calendar/reading/EventName.h"
#include "Understanding/skills/calendar/reading/EventWords.h"
#include "Understanding/skills/reminders/ReminderChange.h"
#include "Understanding/skills/reminders/ReminderIntent.h"
#include "Understanding/skills/reminders/ReminderRules.h"
#include "Understanding/time/SpokenMove.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/time/SpokenWhen.h"
#include "Understanding/time/TimeChoicePicker.h"
#include "Understanding/time/TimeWords.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <utility>

namespace quorvell {

namespace {

using Step = std::optional<RuleStep>;

constexpr const char* notFound = "I found nothing like that in your calendar.";

DateParts now(const RuleSurroundings& around)
{
    return DateParts::from(around.now, around.calendar);
}

RuleStep tellNext(RequestMemory memory, const RuleSurroundings& around)
{
    const Wish wish = std::exchange(memory.wish, {});
    if (!wish.title.empty())
        memory.found = Pointing::named(memory.found, wish.title);
    std::erase_if(memory.found, [&](const FoundThing& event) {
        return !event.start || *event.start < now(around) || (wish.after && *event.start <= *wish.after);
    });
    // What is asked for "after that" is behind this one. A time alone is no wish to move it: the topic stays.
    if (!memory.found.empty())
        memory.event = memory.found.front();
    else if (!wish.title.empty())
        memory.event = {}; // "It" would be something else than what was asked for.
    std::string reply = wish.title.empty() || !memory.found.empty() ? AgendaReply::next(memory.found) : notFound;
    return {std::move(reply), std::move(memory)};
}

/// "Put my driving test on december 9th": where there is none to be moved, it is new.
RuleStep offerToAdd(const Wish& wish, RequestMemory memory, const RuleSurroundings& around)
{
    static const Pattern lead(
        "^(?:(?:please|can|could|you|just|i|we|hey|to) )*(?:put|set up|get|need|have|schedule|arrange)"
        "(?: (?:in|down|me|us))? ",
        Pattern::caseless);
    static const Pattern told("\\b(?:changed|moved|rescheduled|postponed|shifted|delayed|instead|rather "
                              "than|should|must|will|has to|make)\\b",
        Pattern::caseless);
    const std::string nothing = "I found no " + wish.title + " in your calendar, and no reminder of it.";
    const bool isTold = told.find(memory.words).has_value();
    EventWords event =
        EventWords::read(isTold ? wish.title + " " + wish.when : lead.replaceAll(memory.words, ""), around);
    if (event.isRepeatUnknown || !event.start || event.isTimeUnclear || event.isPartOfDay || event.title.empty())
        return {nothing, std::move(memory)};
    const AgendaIntent intent = AgendaIntent::ofNew(std::move(event));
    const auto call = AgendaCalls{around}.add(intent);
    const auto* request = std::get_if<ToolRequest>(&call);
    if (!request)
        return {nothing, std::move(memory)};
    return RuleStep::asking(
        {.kind = &ToolResults::confirmation,
            .question = nothing + " Should I put " + intent.title + " in as new, "
                + (intent.repeat.empty() ? "" : "starting ") + SpokenWhen::on(SpokenWhen::date(*intent.start))
                + (intent.end ? ", until " + SpokenWhen::clock(*intent.end) : "") + "?",
            .tool = request->name,
            .arguments = request->arguments},
        std::move(memory));
}

/// People say "move the dentist" of a reminder, too.
RuleStep changeReminderInstead(RequestMemory memory, bool isReminder, const RuleSurroundings& around)
{
    static const Pattern noun("\\s+(?:appointment|meeting)$", Pattern::caseless);
    Wish wish = std::exchange(memory.wish, {});
    const bool isName = !EventName::words(wish.title).empty() && !CalendarWords::holdsTimeWords(wish.title);
    static const Pattern entered(
        "^(?:(?:please|can you|could you|just|i|we) )*(?:put|set up|get|need|have|schedule|arrange|make)\\b"
        "|\\b(?:should|must|will|needs to|has to) (?:be|start|begin)\\b|\\binstead of\\b|\\b(?:has been|was|got|had "
        "been|is|will be|have been) "
        "(?:changed|moved|rescheduled|postponed|shifted|delayed)\\b",
        Pattern::caseless);
    if (wish.kind == Wish::Kind::move && !isReminder && isName && entered.find(memory.words))
        return offerToAdd(wish, std::move(memory), around);
    if (wish.kind == Wish::Kind::cancel && !isReminder)
        return {.answer = isName ? "I found no " + wish.title + " in your calendar, and no reminder of it."
                                 : std::string(notFound),
            .memory = std::move(memory),
            .isNotFound = true};
    wish.title = ReminderChange::taskNamed(noun.replaceAll(wish.title, ""));
    if (!around.offers("set_reminder") || wish.title.empty() || wish.minutes < 0)
        return {notFound, std::move(memory)};
    return ReminderRules::carryOut(wish, std::move(memory), around);
}

bool isNoEvent(const FoundThing& thing)
{
    return thing.skill != AgendaCalls::skill;
}

/// Nothing of that name within a month: within a year, then, by its words.
RuleStep lookFarther(RequestMemory memory, const RuleSurroundings& around)
{
    constexpr std::chrono::days year{365};
    memory.events.isWide = true;
    const auto dayIn = [&](std::chrono::days days) {
        return DateParts::fromDay(around.calendar.addingDays(around.now, days), around.calendar);
    };
    const SpokenDays days{dayIn(std::chrono::days(0)), dayIn(year), "in the next year"};
    return {AgendaCalls{around}.whatsOn(days, EventName::words(memory.wish.title)), std::move(memory)};
}

/// As it was added, and not one of its times.
bool isWholeSeries(const FoundThing& event)
{
    return event.repeats && event.id.find('#') == std::string::npos;
}

/// Times of one series are told with the same id but for what follows "#". The next one stands for all.
void keepNextOfSeries(std::vector<FoundThing>& events, const RuleSurroundings& around)
{
    const auto series = [](const FoundThing& event) { return event.id.substr(0, event.id.find('#')); };
    const bool isOne = std::ranges::all_of(
        events, [&](const FoundThing& event) { return event.repeats && series(event) == series(events.front()); });
    const auto next = std::ranges::find_if(
        events, [&](const FoundThing& event) { return event.start && *event.start >= now(around); });
    if (isOne && events.size() > 1)
        events = {next != events.end() ? *next : events.back()};
}

RuleStep askWhichEvent(RequestMemory memory)
{
    constexpr std::size_t mostNamed = 3;
    std::string question = "There are several: ";
    for (std::size_t index = 0; index < std::min(memory.found.size(), mostNamed); ++index)
        question += (index > 0 ? "; " : "") + AgendaReply::named(memory.found[index]);
    return RuleStep::asking(
        {.kind = &AgendaChange::whichEvent, .question = question + ". Which one do you mean?"}, std::move(memory));
}

/// "To next week": the same day of it at the same hour.
std::optional<DateParts> inNextWeek(const DateParts& start, const std::string& when, const RuleSurroundings& around)
{
    static const Pattern week("^(?:(?:evening|night|morning|afternoon) )?(?:(?:to|till|until|on|in|at) )?(?:the "
                              ")?(?:next|following|coming) week$",
        Pattern::caseless);
    const auto instant = start.instant(around.calendar);
    if (!instant || !week.find(when))
        return std::nullopt;
    constexpr int daysOfWeek = 7;
    const auto sinceMonday = [&](Instant day) { return (around.calendar.parts(day).weekday + 5) % daysOfWeek; };
    // Days stand at noon, so that no change of the clock moves them.
    const auto noonOf = [&](const DateParts& day) {
        constexpr int noon = 12 * 60;
        DateParts moment = day.wholeDay();
        moment.allDay = false;
        return moment.adding(noon).instant(around.calendar).value_or(around.now);
    };
    const DateParts today = DateParts::fromDay(around.now, around.calendar);
    const auto apart = std::chrono::round<std::chrono::days>(noonOf(start) - noonOf(today)).count();
    const auto weeksMonday = apart - sinceMonday(*instant) + sinceMonday(around.now); // From this one, in days.
    constexpr int minutesOfDay = 24 * 60;
    // Of what is in the next week already, the one behind that is meant.
    return start.adding((weeksMonday > 0 ? daysOfWeek : daysOfWeek - weeksMonday) * minutesOfDay);
}

/// Where the event goes; nothing where that cannot be told.
SpokenMove newStart(const FoundThing& event, const Wish& wish, const RuleSurroundings& around)
{
    if (!event.start)
        return {};
    if (const auto start = inNextWeek(*event.start, wish.when, around))
        return SpokenMove{{*start}};
    if (!wish.when.empty())
        return SpokenMove::read(wish.when, *event.start, SpokenMove::FarHour::isUsual, around);
    return event.start->allDay ? SpokenMove() : SpokenMove{{event.start->adding(wish.minutes)}};
}

/// With the only event that was found, or the one of them that is meant.
RuleStep carryOutFound(RequestMemory memory, const RuleSurroundings& around)
{
    if (memory.found.size() > 1)
        return askWhichEvent(std::move(memory));
    const FoundThing event = memory.found.front();
    return AgendaChange::carryOut(event, std::move(memory), around);
}

/// "It" is what was told, if that was a list, or what was talked about. Nothing where there is no such thing.
std::optional<RuleStep> changeIt(RequestMemory memory, const RuleSurroundings& around)
{
    if (memory.asked == RequestMemory::CalendarQuestion::events) {
        std::erase_if(memory.found, isNoEvent);
        return memory.found.empty() ? std::nullopt : std::optional(carryOutFound(std::move(memory), around));
    }
    if (memory.event.id.empty())
        return std::nullopt;
    const FoundThing event = memory.event;
    if (!isWholeSeries(event) || memory.wish.scope != Wish::Scope::one)
        return AgendaChange::carryOut(event, std::move(memory), around);
    // Which of its times is next, the calendar knows.
    memory.wish.title = event.title;
    return RuleStep{AgendaCalls{around}.whatsOn(SpokenDays::ahead(around)), std::move(memory)};
}

/// As long after the new start as it was after the old one.
std::optional<DateParts> newEnd(const FoundThing& event, const DateParts& start, const RuleSurroundings& around)
{
    const auto instantOf = [&](const std::optional<DateParts>& parts) {
        return parts && !parts->allDay ? parts->instant(around.calendar) : std::nullopt;
    };
    const auto from = instantOf(event.start);
    const auto to = instantOf(event.end);
    if (!from || !to || *to <= *from || start.allDay)
        return std::nullopt;
    return start.adding(std::chrono::duration_cast<std::chrono::minutes>(*to - *from).count());
}

RuleStep askWhichStart(const FoundThing& event, const std::vector<DateParts>& starts, RequestMemory memory)
{
    PendingQuestion asked{.kind = &AgendaChange::whichStart, .question = "Do you mean "};
    for (const DateParts& start : starts) {
        asked.question += (asked.choices.empty() ? "" : ", or ") + SpokenWhen::date(start);
        asked.choices.push_back({start, SpokenWhen::date(start)});
    }
    asked.question += "?";
    memory.found = {event};
    return RuleStep::asking(std::move(asked), std::move(memory));
}

RuleStep moveTo(const FoundThing& event, const DateParts& start, RequestMemory memory, const RuleSurroundings& around)
{
    if (event.start == start)
        return RuleStep::asking({.kind = &AgendaChange::newTime,
                                    .question = event.title + " is " + SpokenWhen::on(SpokenWhen::date(start))
                                        + " already. When should it be instead?",
                                    .task = event.title},
            std::move(memory));
    const auto end = newEnd(event, start, around);
    return {AgendaCalls{around}.move(event.id, start, end, memory.wish.scope), std::move(memory)};
}

Step takeNewTime(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings& around)
{
    const auto found = TimeWords::atEnd(ReminderIntent::timeAnswer(core), around);
    if (!found || !found->rest.empty())
        return std::nullopt;
    memory.wish = {.kind = Wish::Kind::move, .title = asked.task, .when = found->time};
    return RuleStep{AgendaCalls{around}.whatsOn(SpokenDays::ahead(around)), std::move(memory)};
}

Step takeEvent(const std::string& core, const PendingQuestion&, RequestMemory memory, const RuleSurroundings& around)
{
    const auto named = EventName::fitting(memory.found, core);
    const auto event = named.size() == 1 ? std::optional(named.front()) : Pointing::at(memory.found, core, around);
    return event ? Step(AgendaChange::carryOut(*event, std::move(memory), around)) : std::nullopt;
}

Step takeOccurrences(
    const std::string& core, const PendingQuestion&, RequestMemory memory, const RuleSurroundings& around)
{
    memory.wish.scope = SeriesWords::answer(core);
    if (memory.wish.scope == Wish::Scope::open || memory.found.empty())
        return std::nullopt;
    const FoundThing event = memory.found.front();
    return AgendaChange::carryOut(event, std::move(memory), around);
}

Step takeStart(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings& around)
{
    static const Pattern date("\\b\\d{1,2}(?:st|nd|rd|th)\\b", Pattern::caseless); // "The 2nd" is no second one.
    auto start = date.find(core) ? DayChoice::named(core, asked.choices) : std::nullopt;
    if (!start && !date.find(core))
        start = TimeChoicePicker::pick(SpokenPhrase::withDigits(core), asked.choices);
    if (!start || memory.found.empty())
        return std::nullopt;
    const FoundThing event = memory.found.front();
    return moveTo(event, *start, std::move(memory), around);
}

} // namespace

const QuestionKind AgendaChange::newTime{takeNewTime};
const QuestionKind AgendaChange::whichEvent{takeEvent};
const QuestionKind AgendaChange::occurrences{takeOccurrences};
const QuestionKind AgendaChange::whichStart{takeStart};

std::optional<RuleStep> AgendaChange::afterList(
    std::vector<FoundThing> listed, RequestMemory memory, const RuleSurroundings& around)
{
    memory.found = std::move(listed);
    if (memory.wish.kind == Wish::Kind::none)
        return std::nullopt;
    std::vector<FoundThing> reminders;
    std::ranges::copy_if(memory.found, std::back_inserter(reminders), isNoEvent);
    std::erase_if(memory.found, isNoEvent);
    if (memory.wish.kind == Wish::Kind::tellNext)
        return tellNext(std::move(memory), around);
    const auto all = std::exchange(memory.found, {});
    memory.found = EventName::fitting(all, memory.wish.title);
    if (memory.found.empty())
        memory.found = Pointing::named(all, memory.wish.title);
    if (memory.found.empty() && memory.wish.kind == Wish::Kind::cancel) // It is named before it goes.
        memory.found = EventName::alike(all, memory.wish.title);
    const bool isReminder = !Pointing::named(reminders, memory.wish.title).empty()
        || !Pointing::named({memory.reminder}, memory.wish.title).empty();
    const bool isNamed = !EventName::words(memory.wish.title).empty();
    if (memory.found.empty() && !isReminder && isNamed && !memory.events.isWide)
        return lookFarther(std::move(memory), around);
    if (memory.found.empty())
        return changeReminderInstead(std::move(memory), isReminder, around);
    const auto spokenOf = std::ranges::find(memory.found, memory.event.id, &FoundThing::id);
    if (memory.found.size() > 1 && spokenOf != memory.found.end() && !memory.event.id.empty())
        memory.found = {FoundThing(*spokenOf)};
    keepNextOfSeries(memory.found, around);
    return carryOutFound(std::move(memory), around);
}

RuleStep AgendaChange::carryOut(const FoundThing& event, RequestMemory memory, const RuleSurroundings& around)
{
    const AgendaCalls calls{around};
    const Wish wish = memory.wish;
    if (event.repeats && wish.scope == Wish::Scope::open && !isWholeSeries(event)) {
        memory.found = {event};
        const std::string when = event.start ? SpokenWhen::on(SpokenWhen::date(event.start->wholeDay())) : "";
        return RuleStep::asking({.kind = &AgendaChange::occurrences,
                                    .question = event.title + " repeats. Only the one " + when + ", or every time?"},
            std::move(memory));
    }
    if (wish.kind == Wish::Kind::cancel)
        return {calls.cancel(event.id, wish.scope), std::move(memory)};
    if (!wish.from.empty() && event.start && !SpokenMove::isAt(wish.from, *event.start, around)) // Another is meant.
        return RuleStep::asking({.kind = &AgendaChange::newTime,
                                    .question = AgendaReply::named(event) + ". When should it be instead?",
                                    .task = event.title},
            std::move(memory));
    const SpokenMove to = newStart(event, wish, around);
    if (to.choices.empty())
        return {"Sorry, I could not understand the new time.", std::move(memory)};
    if (to.choices.size() > 1)
        return askWhichStart(event, to.choices, std::move(memory));
    return moveTo(event, to.choices.front(), std::move(memory), around);
}

/// Moves or cancels what is named, or what was talked about.
RuleStep AgendaChange::make(const AgendaIntent& intent, RequestMemory memory, const RuleSurroundings& around)
{
    const AgendaCalls calls{around};
    const bool isMove = intent.kind == AgendaIntent::Kind::move;
    if (isMove && intent.when.empty() && intent.minutes == 0)
        return RuleStep::asking(
            {.kind = &AgendaChange::newTime, .question = "When should it be instead?", .task = intent.title},
            std::move(memory));
    memory.wish = wishIn(intent, memory);
    if (auto refusal = calls.refusal())
        return {*std::move(refusal), std::move(memory)};
    if (intent.title.empty()) {
        if (auto step = changeIt(memory, around))
            return *std::move(step);
    }
    return {calls.whatsOn(intent.days.value_or(SpokenDays::ahead(around))), std::move(memory)};
}

Wish AgendaChange::wishIn(const AgendaIntent& intent, const RequestMemory& memory)
{
    const bool isTold = intent.kind == AgendaIntent::Kind::next;
    return {.kind = isTold                            ? Wish::Kind::tellNext
            : intent.kind == AgendaIntent::Kind::move ? Wish::Kind::move
                                                      : Wish::Kind::cancel,
        .title = intent.title,
        .when = intent.when,
        .minutes = isTold ? 0 : intent.minutes,
        .scope = intent.scope,
        .after = isTold && intent.isFurther ? memory.event.start : std::nullopt,
        .from = intent.from};
}

} // namespace quorvell
