#include "Quorvell/tools/AgendaTools.h"

#include "Quorvell/tools/EventAnswers.h"
#include "QuorvellCore/reminders/DateParts.h"
#include "QuorvellCore/safety/SpokenConsent.h"
#include "QuorvellCore/text/Characters.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <utility>

namespace quorvell {

namespace {

using std::chrono::days;
using std::chrono::minutes;

constexpr std::size_t longestTitle = 500; ///< User-perceived characters.
constexpr std::size_t longestNotes = 5000;
constexpr days longestLook{400};
constexpr const char* dateForm = "must be a day that exists, written like \"2026-11-22 17:00\" or, for a whole day, "
                                 "\"2026-11-22\".";

/// A deletion that the user has been asked about.
struct PendingDeletion {
    EventID id;
    EventScope scope = EventScope::occurrence;
    Instant asked{};
};

struct Shared {
    Agenda& agenda;
    Notebook& notebook;
    AgendaToolContext context;
    std::optional<PendingDeletion> pending;
};

/// A moment of the call, or the whole of a day.
struct CallDate {
    Instant start{};
    bool allDay = false;
};

std::string argument(const Json& arguments, std::string_view key)
{
    return trimmed(repairUtf8(readString(arguments, key).value_or("")));
}

/// Nothing when the key is missing; a problem when it is no date.
struct ReadDate {
    std::optional<CallDate> date;
    std::string problem;
};

ReadDate readDate(const Json& arguments, const char* key, const Calendar& calendar)
{
    const std::string text = argument(arguments, key);
    if (text.empty())
        return {};
    const auto parts = DateParts::parse(text);
    const auto instant = parts ? parts->instant(calendar) : std::nullopt;
    if (!instant)
        return {std::nullopt, std::string(key) + " " + dateForm};
    return {CallDate{*instant, parts->allDay}, ""};
}

Instant dayAfter(Instant moment, const Calendar& calendar)
{
    return calendar.instant(calendar.day(moment) + days(1), std::chrono::hours(0));
}

/// The stretch of time that a call asks about.
struct Stretch {
    Instant from{};
    Instant to{};
    std::string problem;
};

Stretch readStretch(const Json& arguments, const Shared& shared, days usualLength)
{
    const Calendar& calendar = shared.context.calendar;
    const ReadDate from = readDate(arguments, "from", calendar);
    const ReadDate to = readDate(arguments, "to", calendar);
    Stretch stretch;
    stretch.problem = from.problem.empty() ? to.problem : from.problem;
    stretch.from = from.date ? from.date->start : shared.context.now();
    if (to.date)
        stretch.to = to.date->allDay ? dayAfter(to.date->start, calendar) : to.date->start;
    else if (usualLength == days(0))
        stretch.to = dayAfter(stretch.from, calendar);
    else
        stretch.to = calendar.addingDays(stretch.from, usualLength);
    stretch.to = std::min(stretch.to, stretch.from + longestLook);
    if (stretch.problem.empty() && stretch.to <= stretch.from)
        stretch.problem = "to must come after from.";
    return stretch;
}

void addProblems(Json& result, const AgendaReading& reading)
{
    if (!reading.problems.empty())
        result["problems"] = reading.problems;
}

using SharedPointer = std::shared_ptr<Shared>;

void whatsOn(const SharedPointer& shared, const LiveFunctionCall& call, ToolReply reply)
{
    const Stretch stretch = readStretch(call.args, *shared, days(0));
    if (!stretch.problem.empty())
        return reply.fail(stretch.problem);
    const auto answer = std::make_shared<ToolReply>(std::move(reply));
    shared->agenda.read(
        stretch.from, stretch.to, shared->context.calendar, [shared, stretch, answer](const AgendaReading& reading) {
            std::vector<Note> visible = shared->notebook.notes();
            std::erase_if(visible, [](const Note& note) { return !note.isVisibleToQuorvell(); });
            const EventAnswers answers(shared->context.now(), shared->context.calendar);
            Json result = answers.agenda(reading.events, visible, stretch.from, stretch.to);
            addProblems(result, reading);
            answer->answer(result);
        });
}

void findFreeTime(const SharedPointer& shared, const LiveFunctionCall& call, ToolReply reply)
{
    constexpr double shortest = 5;
    constexpr double longest = 14 * 60;
    const double wanted = call.number("minutes").value_or(0);
    if (!(wanted >= shortest && wanted <= longest))
        return reply.fail("minutes must be a number from 5 to 840, the hours of a day that people are awake.");
    const Stretch stretch = readStretch(call.args, *shared, days(7));
    if (!stretch.problem.empty())
        return reply.fail(stretch.problem);
    FreeTime::Wish wish;
    wish.length = minutes(static_cast<int>(wanted));
    wish.from = std::max(stretch.from, shared->context.now());
    wish.to = stretch.to;
    const auto answer = std::make_shared<ToolReply>(std::move(reply));
    shared->agenda.read(
        wish.from, wish.to, shared->context.calendar, [shared, wish, answer](const AgendaReading& reading) {
            const EventAnswers answers(shared->context.now(), shared->context.calendar);
            Json slots = Json::array();
            for (const FreeTime& free : FreeTime::find(reading.events, wish, shared->context.calendar))
                slots.push_back(answers.slot(free));
            Json result = {{"status", "free"}, {"minutes", wish.length.count()}, {"slots", std::move(slots)}};
            addProblems(result, reading);
            answer->answer(result);
        });
}

/// Answers with the event as it stands and with what stands in its way.
void answerWithConflicts(
    const SharedPointer& shared, const char* status, const CalendarEvent& event, std::shared_ptr<ToolReply> answer)
{
    shared->agenda.read(event.start, event.end, shared->context.calendar,
        [shared, status, event, answer = std::move(answer)](const AgendaReading& reading) {
            const Instant now = shared->context.now();
            const EventAnswers answers(now, shared->context.calendar);
            Json result = {{"status", status}};
            result.update(answers.event(event));
            result["conflicts"] = answers.conflicts(event, reading.events);
            if (event.end <= now)
                result["past"] = true;
            answer->answer(result);
        });
}

std::string lengthProblem(const Json& arguments)
{
    if (characterCount(argument(arguments, "title")) > longestTitle
        || characterCount(argument(arguments, "place")) > longestTitle)
        return "title and place may have at most 500 characters. Put the rest into notes.";
    if (characterCount(argument(arguments, "notes")) > longestNotes)
        return "notes may have at most 5000 characters. Keep the rest with keep_note.";
    return "";
}

struct ReadDraft {
    EventDraft draft;
    std::string problem;
};

ReadDraft readDraft(const LiveFunctionCall& call, const Shared& shared)
{
    constexpr double usualMinutes = 60;
    constexpr double mostMinutes = 7 * 24 * 60;
    const Calendar& calendar = shared.context.calendar;
    ReadDraft read;
    EventDraft& draft = read.draft;
    draft.title = withUpperCaseFirst(argument(call.args, "title"));
    draft.place = argument(call.args, "place");
    draft.notes = argument(call.args, "notes");
    const ReadDate start = readDate(call.args, "start", calendar);
    const ReadDate end = readDate(call.args, "end", calendar);
    read.problem = lengthProblem(call.args);
    if (read.problem.empty())
        read.problem = start.problem.empty() ? end.problem : start.problem;
    if (read.problem.empty() && (draft.title.empty() || !start.date))
        read.problem = draft.title.empty() ? "title is missing." : "start is missing. Ask the user when it begins.";
    if (!read.problem.empty())
        return read;
    draft.allDay = start.date->allDay || readBool(call.args, "all_day").value_or(false);
    draft.start = draft.allDay ? calendar.startOfDay(start.date->start) : start.date->start;
    const double length = call.number("minutes").value_or(usualMinutes);
    if (draft.allDay)
        draft.end = dayAfter(end.date ? end.date->start : draft.start, calendar);
    else if (end.date)
        draft.end = end.date->start;
    else
        draft.end = draft.start + minutes(std::isnan(length) ? 60 : std::lround(std::clamp(length, 0.0, mostMinutes)));
    if (draft.end < draft.start)
        read.problem = "It would end before it begins. Give an end that comes after start.";
    draft.uid = shared.context.newUid();
    return read;
}

void addEvent(const SharedPointer& shared, const LiveFunctionCall& call, ToolReply reply)
{
    const ReadDraft read = readDraft(call, *shared);
    if (!read.problem.empty())
        return reply.fail("Nothing was added: " + read.problem);
    const auto answer = std::make_shared<ToolReply>(std::move(reply));
    shared->agenda.add(
        read.draft, shared->context.calendar, shared->context.now(), [shared, answer](const AgendaVerdict& verdict) {
            if (verdict.event)
                answerWithConflicts(shared, "added", *verdict.event, answer);
            else
                answer->fail(verdict.problem);
        });
}

struct ReadChange {
    EventChange change;
    std::string problem;
};

/// A day alone moves an event with a time to the same time of that day.
Instant movedTo(const CallDate& date, Instant before, bool allDay, const Calendar& calendar)
{
    if (!date.allDay || allDay)
        return date.start;
    return calendar.addingDays(before, calendar.day(date.start) - calendar.day(before));
}

ReadChange readChange(const Json& changes, const CalendarEvent& event, const Calendar& calendar)
{
    ReadChange read;
    EventChange& change = read.change;
    for (const auto& [key, member] :
        {std::pair("title", &change.title), {"place", &change.place}, {"notes", &change.notes}})
        if (readString(changes, key))
            *member = argument(changes, key);
    if (change.title && change.title->empty())
        change.title.reset();
    const ReadDate start = readDate(changes, "start", calendar);
    const ReadDate end = readDate(changes, "end", calendar);
    change.allDay = readBool(changes, "all_day");
    if (!change.allDay && start.date && !start.date->allDay && event.allDay)
        change.allDay = false;
    const bool allDay = change.allDay.value_or(event.allDay);
    if (start.date)
        change.start = movedTo(*start.date, event.start, allDay, calendar);
    if (end.date)
        change.end = allDay ? dayAfter(end.date->start, calendar) : movedTo(*end.date, event.end, allDay, calendar);
    const bool isNothing =
        !change.title && !change.place && !change.notes && !change.start && !change.end && !change.allDay;
    read.problem = lengthProblem(changes);
    if (read.problem.empty())
        read.problem = start.problem.empty() ? end.problem : start.problem;
    if (read.problem.empty() && isNothing)
        read.problem = "changes is empty. Give only what changes: title, start, end, all_day, place, notes.";
    return read;
}

std::string deletionQuestion(const CalendarEvent& event, EventScope scope, const EventAnswers& answers)
{
    const std::string what = "“" + event.title + "” on " + answers.when(event);
    return event.repeats && scope == EventScope::series ? "Shall I delete " + what + " and every other time of it?"
                                                        : "Shall I delete " + what + "?";
}

void askFirst(const SharedPointer& shared, const CalendarEvent& event, const PendingDeletion& deletion, bool isAgain,
    const std::shared_ptr<ToolReply>& answer)
{
    shared->pending = deletion;
    const EventAnswers answers(shared->context.now(), shared->context.calendar);
    Json result = {{"status", "needs_confirmation"}};
    result.update(answers.event(event));
    result["question"] = deletionQuestion(event, deletion.scope, answers);
    result["message"] = isAgain
        ? "Nothing is deleted: no clear yes was heard. If they want to keep the event, leave it. "
          "Otherwise ask the question again and call once more after their yes."
        : "Nothing is deleted yet. Ask the question, and call again with the same arguments once "
          "they have said yes.";
    answer->answer(result);
}

/// What the user themselves said since they were asked, and nothing else, decides.
bool hasAgreed(const Shared& shared)
{
    constexpr minutes longestMemory{5};
    if (!shared.context.consent || shared.context.now() - shared.pending->asked > longestMemory)
        return false;
    const auto heard = shared.context.consent->heardSince(shared.pending->asked);
    return heard && SpokenConsent::isAffirmative(*heard) && !SpokenConsent::hesitates(*heard);
}

void cancelEvent(const SharedPointer& shared, const EventID& id, EventScope scope, ToolReply reply)
{
    const auto answer = std::make_shared<ToolReply>(std::move(reply));
    const auto& calendar = shared->context.calendar;
    shared->agenda.find(id, calendar, [shared, id, scope, answer](const AgendaVerdict& found) {
        if (!found.event)
            return answer->fail(found.problem);
        const bool isAgain = shared->pending && shared->pending->id == id && shared->pending->scope == scope;
        if (!isAgain || !hasAgreed(*shared))
            return askFirst(shared, *found.event, {id, scope, shared->context.now()}, isAgain, answer);
        shared->pending.reset();
        shared->agenda.remove(id, scope, shared->context.calendar, shared->context.now(),
            [shared, answer, event = *found.event](const AgendaVerdict& removed) {
                if (!removed.problem.empty())
                    return answer->fail(removed.problem);
                Json result = {{"status", "deleted"}};
                result.update(EventAnswers(shared->context.now(), shared->context.calendar).event(event));
                answer->answer(result);
            });
    });
}

void changeEvent(const SharedPointer& shared, const LiveFunctionCall& call, ToolReply reply)
{
    const auto id = EventID::parse(argument(call.args, "id"));
    if (!id)
        return reply.fail(
            "Nothing was changed: id is missing. Look the event up with whats_on and use the id it gives.");
    const bool isSeries = readBool(call.args, "series").value_or(false);
    const EventScope scope = isSeries ? EventScope::series : EventScope::occurrence;
    const Json* changes = memberOf(call.args, "changes");
    const bool hasChanges = changes && changes->is_object() && !changes->empty();
    const bool cancels = readBool(call.args, "cancel").value_or(false);
    if (cancels == hasChanges)
        return reply.fail("Nothing was changed: give either changes or cancel.");
    if (cancels)
        return cancelEvent(shared, *id, scope, std::move(reply));
    const auto answer = std::make_shared<ToolReply>(std::move(reply));
    shared->agenda.find(*id, shared->context.calendar,
        [shared, id = *id, scope, changes = *changes, answer](const AgendaVerdict& found) {
            if (!found.event)
                return answer->fail(found.problem);
            const ReadChange read = readChange(changes, *found.event, shared->context.calendar);
            if (!read.problem.empty())
                return answer->fail("Nothing was changed: " + read.problem);
            shared->agenda.change(id, scope, read.change, shared->context.calendar, shared->context.now(),
                [shared, answer](const AgendaVerdict& verdict) {
                    if (verdict.event)
                        answerWithConflicts(shared, "changed", *verdict.event, answer);
                    else
                        answer->fail(verdict.problem);
                });
        });
}

} // namespace

void registerAgendaTools(ToolRegistry& registry, Agenda& agenda, Notebook& notebook, AgendaToolContext context)
{
    const auto shared = std::make_shared<Shared>(Shared{agenda, notebook, std::move(context), std::nullopt});
    const auto add = [&](const char* name, void (*handler)(const SharedPointer&, const LiveFunctionCall&, ToolReply)) {
        registry.add(name, [shared, handler](const LiveFunctionCall& call, ToolReply reply) {
            handler(shared, call, std::move(reply));
        });
    };
    add("whats_on", whatsOn);
    add("find_free_time", findFreeTime);
    add("add_event", addEvent);
    add("change_event", changeEvent);
}

} // namespace quorvell
