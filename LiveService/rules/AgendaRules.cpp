#include "LiveService/rules/AgendaRules.h"

#include "LiveService/replies/AgendaReply.h"
#include "LiveService/replies/PlainReplies.h"
#include "LiveService/rules/ReminderChange.h"
#include "LiveService/rules/SpokenDays.h"
#include "LiveService/rules/ToolResultRules.h"
#include "QuorvellCore/reminders/DateParts.h"
#include "QuorvellCore/text/TextMatch.h"

#include <utility>

namespace quorvell {

namespace {

using Kind = PendingQuestion::Kind;

constexpr const char* notFound = "I found nothing like that in your calendar.";
constexpr std::size_t dayOnly = 10; ///< Length of "2026-11-22".

RuleStep ask(PendingQuestion question, RequestMemory memory)
{
    std::string text = question.question;
    memory.pending = std::move(question);
    return {std::move(text), std::move(memory)};
}

RuleStep add(const AgendaIntent& intent, RequestMemory memory, const ToolRequests& requests)
{
    if (intent.title.empty())
        return ask(
            {.kind = Kind::eventTitle, .question = "What should I put into your calendar?", .date = intent.start},
            std::move(memory));
    if (intent.start.empty())
        return ask({.kind = Kind::eventTime, .question = "When is it?", .task = intent.title}, std::move(memory));
    auto answer = requests.addEvent(intent.title, intent.start, intent.end, intent.minutes);
    const auto* request = std::get_if<ToolRequest>(&answer);
    if (!intent.isUnasked || !request)
        return {std::move(answer), std::move(memory)};
    return ask({.kind = Kind::confirm,
                   .question = "Should I put that into your calendar?",
                   .tool = request->name,
                   .arguments = request->arguments},
        std::move(memory));
}

bool holdsWords(const std::string& title, const std::string& words)
{
    const std::string text = " " + TextMatch::normalized(title) + " ";
    const std::string wanted = TextMatch::normalized(words);
    for (std::size_t start = 0; start < wanted.size();) {
        const std::size_t end = std::min(wanted.find(' ', start), wanted.size());
        const std::string word = wanted.substr(start, end - start);
        const bool isFiller = word == "the" || word == "my" || word == "with" || word == "a" || word == "meeting"
            || word == "appointment" || word == "event" || word == "one";
        if (!isFiller && text.find(" " + word) == std::string::npos)
            return false;
        start = end + 1;
    }
    return !wanted.empty();
}

std::vector<FoundEvent> meant(const std::vector<FoundEvent>& events, const std::string& words)
{
    std::vector<FoundEvent> found;
    for (const FoundEvent& event : events) {
        if (holdsWords(event.title, words))
            found.push_back(event);
    }
    return found;
}

RuleStep tellNext(RequestMemory memory, const RuleSurroundings& around)
{
    const EventWish wish = std::exchange(memory.wish, {});
    if (!wish.title.empty())
        memory.events = meant(memory.events, wish.title);
    const std::string now = DateParts::from(around.now, around.calendar).text();
    std::erase_if(memory.events,
        [&](const FoundEvent& event) { return event.start < now || (!wish.when.empty() && event.start <= wish.when); });
    // What is asked for "after that" is behind this one. A time alone is no wish to move it: the topic stays.
    if (!memory.events.empty())
        memory.event = memory.events.front();
    std::string reply = wish.title.empty() || !memory.events.empty() ? AgendaReply::next(memory.events) : notFound;
    return {std::move(reply), std::move(memory)};
}

/// People say "move the dentist" of a reminder, too.
RuleStep changeReminderInstead(RequestMemory memory, const RuleSurroundings& around)
{
    const EventWish wish = std::exchange(memory.wish, {});
    const std::string task = ReminderChange::taskNamed(wish.title);
    if (!around.offers("set_reminder") || task.empty() || wish.minutes < 0)
        return {notFound, std::move(memory)};
    const ToolRequests requests{around};
    if (wish.kind == EventWish::Kind::cancel)
        return {requests.finishReminder(task), std::move(memory)};
    const std::string when = wish.when.empty() ? "by " + std::to_string(wish.minutes) + " minutes" : wish.when;
    return {requests.putOffReminder(task, when), std::move(memory)};
}

/// Where the event goes.
std::optional<std::string> newStart(const FoundEvent& event, const EventWish& wish, const RuleSurroundings& around)
{
    const auto old = DateParts::parse(event.start);
    if (wish.when.empty())
        return old && !old->allDay ? std::optional(old->adding(wish.minutes).text()) : std::nullopt;
    return SpokenMoment::movedTo(wish.when, event.start, around);
}

/// As long after the new start as it was after the old one.
std::string newEnd(const FoundEvent& event, const std::string& start, const RuleSurroundings& around)
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
            return ask({.kind = Kind::newEventTime, .question = "When should it be instead?", .task = intent.title},
                std::move(memory));
        memory.wish = {EventWish::Kind::move, intent.title, intent.when, intent.minutes};
        break;
    case AgendaIntent::Kind::cancel:
        memory.wish = {EventWish::Kind::cancel, intent.title, {}, 0};
        break;
    }
    if (!around.offers("change_event"))
        return {PlainReplies::notOffered("change your calendar"), std::move(memory)};
    if (intent.title.empty() && !memory.event.id.empty()) {
        memory.events = {memory.event};
        if (auto request = carryOut(memory, 0, around))
            return {std::move(*request), std::move(memory)};
    }
    return {requests.whatsOn(intent.days), std::move(memory)};
}

std::optional<RuleStep> AgendaRules::afterList(
    std::string_view result, RequestMemory memory, const RuleSurroundings& around)
{
    memory.events = ToolResultRules::eventsIn(result);
    if (memory.wish.kind == EventWish::Kind::none)
        return std::nullopt;
    if (memory.wish.kind == EventWish::Kind::tellNext)
        return tellNext(std::move(memory), around);
    memory.events = meant(memory.events, memory.wish.title);
    if (memory.events.empty())
        return changeReminderInstead(std::move(memory), around);
    if (memory.events.size() > 1) {
        std::string question = "There are several: ";
        for (std::size_t index = 0; index < std::min<std::size_t>(memory.events.size(), 3); ++index)
            question += (index > 0 ? ", " : "") + memory.events[index].title;
        return ask({.kind = Kind::whichEvent, .question = question + ". Which one do you mean?"}, std::move(memory));
    }
    if (auto request = carryOut(memory, 0, around))
        return RuleStep{std::move(*request), std::move(memory)};
    return RuleStep{"Sorry, I could not understand the new time.", std::move(memory)};
}

std::optional<ToolRequests::Answer> AgendaRules::carryOut(
    const RequestMemory& memory, std::size_t index, const RuleSurroundings& around)
{
    const ToolRequests requests{around};
    const FoundEvent& event = memory.events[index];
    if (memory.wish.kind == EventWish::Kind::cancel)
        return requests.cancelEvent(event.id);
    const auto start = newStart(event, memory.wish, around);
    if (!start)
        return std::nullopt;
    return requests.moveEvent(event.id, *start, newEnd(event, *start, around));
}

std::optional<std::size_t> AgendaRules::named(const std::vector<FoundEvent>& events, std::string_view words)
{
    std::optional<std::size_t> found;
    for (std::size_t index = 0; index < events.size(); ++index) {
        if (!holdsWords(events[index].title, std::string(words)))
            continue;
        if (found)
            return std::nullopt;
        found = index;
    }
    return found;
}

} // namespace quorvell
