// SPDX-License-Identifier: MIT
#include "LiveService/rules/AgendaRules.h"

#include "LiveService/replies/AgendaReply.h"
#include "LiveService/replies/PlainReplies.h"
#include "LiveService/replies/SpokenWhen.h"
#include "LiveService/rules/Pointing.h"
#include "LiveService/rules/ReminderChange.h"
#include "LiveService/rules/SpokenDays.h"
#include "LiveService/rules/ToolResultRules.h"
#include "QuorvellCore/reminders/DateParts.h"
#include "QuorvellCore/reminders/ReminderRepeat.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

using Kind = PendingQuestion::Kind;

constexpr const char* notFound = "I found nothing like that in your calendar.";
constexpr const char* repeatUnknown =
    "I can repeat an event every day, every weekday, on days of every week, every month or every year, and in no other "
    "way. Please say it in one of these ways.";
constexpr std::size_t dayOnly = 10; ///< Length of "2026-11-22".

/// What comes every day or week hardly takes all of it.
bool lacksTime(const AgendaIntent& intent)
{
    const auto repeat = ReminderRepeat::fromStored(intent.repeat);
    return repeat && repeat->kind != ReminderRepeat::Kind::monthly && repeat->kind != ReminderRepeat::Kind::yearly
        && intent.start.size() <= dayOnly;
}

RuleStep add(const AgendaIntent& intent, RequestMemory memory, const ToolRequests& requests)
{
    if (intent.isRepeatUnknown)
        return {repeatUnknown, std::move(memory)};
    if (intent.title.empty())
        return RuleStep::asking({.kind = Kind::eventTitle,
                                    .question = "What should I put into your calendar?",
                                    .date = intent.start,
                                    .repeat = intent.repeat},
            std::move(memory));
    if (intent.start.empty() || lacksTime(intent))
        return RuleStep::asking({.kind = Kind::eventTime,
                                    .question = intent.repeat.empty() ? "When is it?" : "At what time is it?",
                                    .task = intent.title,
                                    .date = intent.start,
                                    .repeat = intent.repeat},
            std::move(memory));
    auto answer = requests.addEvent(intent);
    const auto* request = std::get_if<ToolRequest>(&answer);
    if (!intent.isUnasked || !request)
        return {std::move(answer), std::move(memory)};
    return RuleStep::asking({.kind = Kind::confirm,
                                .question = "Should I put that into your calendar?",
                                .tool = request->name,
                                .arguments = request->arguments},
        std::move(memory));
}

std::string now(const RuleSurroundings& around)
{
    return DateParts::from(around.now, around.calendar).text();
}

RuleStep tellNext(RequestMemory memory, const RuleSurroundings& around)
{
    const EventWish wish = std::exchange(memory.wish, {});
    if (!wish.title.empty())
        memory.found = Pointing::named(memory.found, wish.title);
    std::erase_if(memory.found, [&](const FoundThing& event) {
        return event.start < now(around) || (!wish.when.empty() && event.start <= wish.when);
    });
    // What is asked for "after that" is behind this one. A time alone is no wish to move it: the topic stays.
    if (!memory.found.empty())
        memory.event = memory.found.front();
    std::string reply = wish.title.empty() || !memory.found.empty() ? AgendaReply::next(memory.found) : notFound;
    return {std::move(reply), std::move(memory)};
}

/// People say "move the dentist" of a reminder, too.
RuleStep changeReminderInstead(RequestMemory memory, const RuleSurroundings& around)
{
    const EventWish wish = std::exchange(memory.wish, {});
    const std::string task = ReminderChange::taskNamed(wish.title);
    if (!around.offers("set_reminder") || task.empty() || wish.minutes < 0)
        return {notFound, std::move(memory)};
    return {AgendaRules::changeReminder(task, wish, around), std::move(memory)};
}

bool isNoEvent(const FoundThing& thing)
{
    return thing.kind != FoundThing::Kind::event;
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
    const auto next = std::ranges::find_if(events, [&](const FoundThing& event) { return event.start >= now(around); });
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
        {.kind = Kind::whichEvent, .question = question + ". Which one do you mean?"}, std::move(memory));
}

/// Where the event goes.
std::optional<std::string> newStart(const FoundThing& event, const EventWish& wish, const RuleSurroundings& around)
{
    const auto old = DateParts::parse(event.start);
    if (wish.when.empty())
        return old && !old->allDay ? std::optional(old->adding(wish.minutes).text()) : std::nullopt;
    return SpokenMoment::movedTo(wish.when, event.start, around);
}

/// With the only event that was found, or the one of them that is meant.
RuleStep carryOutFound(RequestMemory memory, const RuleSurroundings& around)
{
    if (memory.found.size() > 1)
        return askWhichEvent(std::move(memory));
    const FoundThing event = memory.found.front();
    return AgendaRules::carryOut(event, std::move(memory), around);
}

/// "It" is what was told, if that was a list, or what was talked about. Nothing where there is no such thing.
std::optional<RuleStep> changeIt(RequestMemory memory, const RuleSurroundings& around)
{
    if (memory.topic == RequestMemory::Topic::events) {
        std::erase_if(memory.found, isNoEvent);
        return memory.found.empty() ? std::nullopt : std::optional(carryOutFound(std::move(memory), around));
    }
    if (memory.event.id.empty())
        return std::nullopt;
    const FoundThing event = memory.event;
    if (!isWholeSeries(event) || memory.wish.scope != EventWish::Scope::one)
        return AgendaRules::carryOut(event, std::move(memory), around);
    // Which of its times is next, the calendar knows.
    memory.wish.title = event.title;
    return RuleStep{ToolRequests{around}.whatsOn(SpokenDays::ahead(around)), std::move(memory)};
}

/// As long after the new start as it was after the old one.
std::string newEnd(const FoundThing& event, const std::string& start, const RuleSurroundings& around)
{
    const auto instantOf = [&](const std::string& text) {
        const auto parts = DateParts::parse(text);
        return parts && !parts->allDay ? parts->instant(around.calendar) : std::nullopt;
    };
    const auto from = instantOf(event.start);
    const auto to = instantOf(event.end);
    const auto parts = DateParts::parse(start);
    if (!from || !to || *to <= *from || !parts || parts->allDay)
        return {};
    return parts->adding(std::chrono::duration_cast<std::chrono::minutes>(*to - *from).count()).text();
}

} // namespace

RuleStep AgendaRules::answer(const AgendaIntent& intent, RequestMemory memory, const RuleSurroundings& around)
{
    const ToolRequests requests{around};
    memory.wish = {};
    memory.days = intent.days.words;
    memory.firstDay = intent.days.from.substr(0, dayOnly);
    memory.lastDay = intent.days.to.substr(0, dayOnly);
    switch (intent.kind) {
    case AgendaIntent::Kind::list:
        memory.topic = RequestMemory::Topic::events;
        return {requests.whatsOn(intent.days), std::move(memory)};
    case AgendaIntent::Kind::next:
        memory.wish = {.kind = EventWish::Kind::tellNext,
            .title = intent.title,
            .when = intent.isFurther ? memory.event.start : std::string()};
        return {requests.whatsOn(intent.days), std::move(memory)};
    case AgendaIntent::Kind::findTime:
        memory.topic = RequestMemory::Topic::freeTime;
        memory.freeMinutes = intent.minutes;
        return {requests.findFreeTime(intent.minutes, intent.days), std::move(memory)};
    case AgendaIntent::Kind::add:
        return add(intent, std::move(memory), requests);
    case AgendaIntent::Kind::move:
        if (intent.when.empty() && intent.minutes == 0)
            return RuleStep::asking(
                {.kind = Kind::newEventTime, .question = "When should it be instead?", .task = intent.title},
                std::move(memory));
        memory.wish = {EventWish::Kind::move, intent.title, intent.when, intent.minutes, intent.scope};
        break;
    case AgendaIntent::Kind::cancel:
        memory.wish = {EventWish::Kind::cancel, intent.title, {}, 0, intent.scope};
        break;
    }
    if (!around.offers("change_event"))
        return {PlainReplies::notOffered("change your calendar"), std::move(memory)};
    if (intent.title.empty()) {
        if (auto step = changeIt(memory, around))
            return *std::move(step);
    }
    return {requests.whatsOn(intent.days), std::move(memory)};
}

std::optional<RuleStep> AgendaRules::afterList(
    std::string_view result, RequestMemory memory, const RuleSurroundings& around)
{
    memory.found = ToolResultRules::agendaIn(result);
    if (memory.wish.kind == EventWish::Kind::none)
        return std::nullopt;
    std::erase_if(memory.found, isNoEvent);
    if (memory.wish.kind == EventWish::Kind::tellNext)
        return tellNext(std::move(memory), around);
    memory.found = Pointing::named(memory.found, memory.wish.title);
    if (memory.found.empty())
        return changeReminderInstead(std::move(memory), around);
    keepNextOfSeries(memory.found, around);
    return carryOutFound(std::move(memory), around);
}

RuleStep AgendaRules::carryOut(const FoundThing& event, RequestMemory memory, const RuleSurroundings& around)
{
    const ToolRequests requests{around};
    const EventWish& wish = memory.wish;
    if (event.repeats && wish.scope == EventWish::Scope::open && !isWholeSeries(event)) {
        memory.found = {event};
        const std::string when = SpokenWhen::on(SpokenWhen::fromDate(event.start.substr(0, dayOnly)));
        return RuleStep::asking({.kind = Kind::occurrences,
                                    .question = event.title + " repeats. Only the one " + when + ", or every time?"},
            std::move(memory));
    }
    if (wish.kind == EventWish::Kind::cancel)
        return {requests.cancelEvent(event.id, wish.scope), std::move(memory)};
    const auto start = newStart(event, wish, around);
    if (!start)
        return {"Sorry, I could not understand the new time.", std::move(memory)};
    return {requests.moveEvent(event.id, *start, newEnd(event, *start, around), wish.scope), std::move(memory)};
}

ToolRequests::Answer AgendaRules::changeReminder(
    const std::string& task, const EventWish& wish, const RuleSurroundings& around)
{
    const ToolRequests requests{around};
    if (wish.kind == EventWish::Kind::cancel)
        return requests.finishReminder(task);
    return requests.putOffReminder(
        task, wish.when.empty() ? "by " + std::to_string(wish.minutes) + " minutes" : wish.when);
}

} // namespace quorvell
