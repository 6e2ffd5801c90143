// SPDX-License-Identifier: MIT
#include "Quorvell/tools/agenda/AgendaTools.h"

#include "Quorvell/tools/agenda/EventAnswers.h"
#include "Quorvell/tools/agenda/EventArguments.h"
#include "Quorvell/tools/agenda/EventSearch.h"
#include "Quorvell/tools/agenda/EventUndo.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quorvell {

namespace {

using std::chrono::days;
using std::chrono::minutes;

struct Shared {
    Agenda& agenda;
    Notebook& notebook;
    AgendaToolContext context;
};

void addProblems(ToolResult& result, const AgendaReading& reading)
{
    if (!reading.problems.empty())
        result.add("problems", reading.problems);
}

std::string joined(const std::vector<std::string>& sentences)
{
    std::string all;
    for (const std::string& sentence : sentences)
        all += (all.empty() ? "" : " ") + sentence;
    return all;
}

using SharedPointer = std::shared_ptr<Shared>;

EventAnswers answersNow(const SharedPointer& shared)
{
    return {shared->context.now(), shared->context.calendar};
}

void offerUndo(const SharedPointer& shared, ToolResult& result, std::vector<EventTrace> traces, std::string what)
{
    EventUndo::offer(
        result, shared->context.undo, shared->agenda, shared->context.calendar, {std::move(traces), std::move(what)});
}

std::vector<EventTrace> tracesOf(const AgendaVerdict& verdict)
{
    return verdict.trace ? std::vector<EventTrace>{*verdict.trace} : std::vector<EventTrace>();
}

/// Whether the call takes back what an earlier one changed; then it is answered.
bool takesBack(const SharedPointer& shared, const LiveFunctionCall& call, ToolReply& reply)
{
    const std::string token = EventArguments::text(call.args, "undo");
    if (token.empty())
        return false;
    if (shared->context.undo)
        shared->context.undo->takeBack(token, std::move(reply));
    else
        reply.fail("Nothing can be taken back here.");
    return true;
}

void whatsOn(const SharedPointer& shared, const LiveFunctionCall& call, ToolReply reply)
{
    const auto stretch = EventArguments::stretch(call.args, days(0), shared->context.now(), shared->context.calendar);
    if (!stretch.problem.empty())
        return reply.fail(stretch.problem);
    const std::string words = EventArguments::text(call.args, "words");
    const auto answer = std::make_shared<ToolReply>(std::move(reply));
    shared->agenda.read(stretch.from, stretch.to, shared->context.calendar,
        [shared, stretch, words, answer](const AgendaReading& reading) {
            if (!reading.isWhole && reading.events.empty())
                return answer->fail("What is on is not known: " + joined(reading.problems));
            const auto notes = shared->notebook.visibleToQuorvell();
            ToolResult result =
                answersNow(shared).agenda(words.empty() ? reading.events : EventSearch::events(reading.events, words),
                    words.empty() ? notes : EventSearch::reminders(notes, words), stretch.from, stretch.to);
            addProblems(result, reading);
            answer->answer(result);
        });
}

void findFreeTime(const SharedPointer& shared, const LiveFunctionCall& call, ToolReply reply)
{
    constexpr double shortest = 5;
    const WakingHours& waking = shared->context.waking;
    const double wanted = call.number("minutes").value_or(0);
    if (!(wanted >= shortest && wanted <= static_cast<double>(waking.length().count())))
        return reply.fail("minutes must be a number from 5 to " + std::to_string(waking.length().count())
            + ", for only " + waking.text() + " counts.");
    const auto stretch = EventArguments::stretch(call.args, days(7), shared->context.now(), shared->context.calendar);
    if (!stretch.problem.empty())
        return reply.fail(stretch.problem);
    FreeTime::Wish wish;
    wish.waking = waking;
    wish.length = minutes(static_cast<int>(wanted));
    wish.from = std::max(stretch.from, shared->context.now());
    wish.to = stretch.to;
    const auto answer = std::make_shared<ToolReply>(std::move(reply));
    shared->agenda.read(
        wish.from, wish.to, shared->context.calendar, [shared, wish, answer](const AgendaReading& reading) {
            if (!reading.isWhole)
                return answer->fail("When they are free is not known: " + joined(reading.problems));
            const EventAnswers answers(shared->context.now(), shared->context.calendar);
            Json slots = Json::array();
            for (const FreeTime& free : FreeTime::find(reading.events, wish, shared->context.calendar))
                slots.push_back(answers.slot(free));
            ToolResult result(ToolStatus::free);
            result.add("minutes", wish.length.count()).add("slots", std::move(slots));
            addProblems(result, reading);
            answer->answer(result);
        });
}

/// Answers with the event as it stands and with what stands in its way. `begun` is how the answer begins.
void answerWithConflicts(
    const SharedPointer& shared, ToolResult begun, const CalendarEvent& event, std::shared_ptr<ToolReply> answer)
{
    shared->agenda.read(event.start, event.end, shared->context.calendar,
        [shared, begun = std::move(begun), event, answer = std::move(answer)](const AgendaReading& reading) {
            const Instant now = shared->context.now();
            const EventAnswers answers(now, shared->context.calendar);
            ToolResult result = begun;
            result.addAll(answers.event(event)).add("conflicts", answers.conflicts(event, reading.events));
            if (Json reminders = answers.remindersDuring(event, shared->notebook.visibleToQuorvell());
                !reminders.empty())
                result.add("reminders", std::move(reminders));
            if (!reading.isWhole) // Else nobody could tell that there may be more conflicts.
                addProblems(result, reading);
            if (event.end <= now)
                result.add("past", true)
                    .advise("It is in the calendar, but already past. Say so and ask whether they "
                            "meant another day; if so, move it with change_event.");
            answer->answer(result);
        });
}

void addEvent(const SharedPointer& shared, const LiveFunctionCall& call, ToolReply reply)
{
    if (takesBack(shared, call, reply))
        return;
    EventArguments::Draft read = EventArguments::draft(call, shared->context.calendar);
    if (!read.problem.empty())
        return reply.fail("Nothing was added: " + read.problem);
    read.draft.uid = shared->context.newUid();
    ToolResult added(ToolStatus::added);
    if (read.draft.repeat)
        added.add("repeat_words", read.draft.repeat->spoken(shared->context.calendar.locale()));
    const auto answer = std::make_shared<ToolReply>(std::move(reply));
    shared->agenda.add(read.draft, shared->context.calendar, shared->context.now(),
        [shared, added = std::move(added), answer](const AgendaVerdict& verdict) {
            if (!verdict.event)
                return answer->fail(verdict.problem);
            ToolResult result = added;
            offerUndo(shared, result, tracesOf(verdict), verdict.event->title + " is no longer in your calendar");
            answerWithConflicts(shared, std::move(result), *verdict.event, answer);
        });
}

/// “Lunch” on Friday 27 November at 1 PM
std::string named(const CalendarEvent& event, const EventAnswers& answers)
{
    return "“" + event.title + "” on " + answers.when(event);
}

/// What goes of it, when it is of a series.
std::string whatGoes(const CalendarEvent& event, EventScope scope, const EventAnswers& answers)
{
    return named(event, answers) + (event.repeats && scope == EventScope::series ? " and every other time of it" : "");
}

std::string deletionQuestion(const std::vector<CalendarEvent>& events, EventScope scope, const EventAnswers& answers)
{
    constexpr std::size_t mostTold = 5;
    if (events.size() == 1)
        return "Shall I delete " + whatGoes(events.front(), scope, answers) + "?";
    std::string question = "Shall I delete " + std::to_string(events.size()) + " events";
    for (std::size_t index = 0; index < std::min(events.size(), mostTold); ++index)
        question += (index == 0 ? ": " : ", ") + whatGoes(events[index], scope, answers);
    const std::size_t others = events.size() - std::min(events.size(), mostTold);
    return question + (others > 0 ? " and " + std::to_string(others) + " more?" : "?");
}

/// Events that go, once the user agreed.
struct Deletion {
    std::vector<EventID> ids{};
    EventScope scope = EventScope::occurrence;
    std::vector<CalendarEvent> events{}; ///< As they were found, in the order of the ids.
    std::vector<EventTrace> traces{};
    std::size_t done = 0;
    std::string problem{}; ///< Of the first that could not be deleted; the others were left.
    std::shared_ptr<ToolReply> reply{};
};
using DeletionPointer = std::shared_ptr<Deletion>;

Json describedEvents(const std::vector<CalendarEvent>& events, const EventAnswers& answers)
{
    Json described = Json::array();
    for (const CalendarEvent& event : events)
        described.push_back(answers.event(event));
    return described;
}

void addWhatGoes(ToolResult& result, const std::vector<CalendarEvent>& events, const EventAnswers& answers)
{
    if (events.size() == 1)
        result.addAll(answers.event(events.front()));
    else
        result.add("count", events.size()).add("items", describedEvents(events, answers));
}

void askFirst(
    const SharedPointer& shared, const Deletion& deletion, const std::string& question, PendingConsent::Answer answer)
{
    if (shared->context.consent)
        shared->context.consent->ask(question);
    ToolResult result(ToolStatus::needsConfirmation);
    addWhatGoes(result, deletion.events, answersNow(shared));
    deletion.reply->answer(result.ask(question).advise(answer == PendingConsent::Answer::none
            ? "Nothing is deleted yet. Ask the question word for word, as the last thing that you say, and call again "
              "with the same arguments once they have said yes."
            : "Nothing is deleted: no clear yes to this very question was heard. If they want to keep the event, leave "
              "it. Otherwise say the question word for word and nothing besides it, and call once more after their "
              "yes."));
}

void answerDeleted(const SharedPointer& shared, const DeletionPointer& deletion)
{
    auto& events = deletion->events;
    if (deletion->done == 0)
        return deletion->reply->fail(deletion->problem);
    const std::size_t wanted = events.size();
    events.resize(deletion->done);
    ToolResult result(ToolStatus::deleted);
    addWhatGoes(result, events, answersNow(shared));
    if (deletion->done < wanted)
        result.add("not_deleted", wanted - deletion->done).add("problem", deletion->problem);
    offerUndo(shared, result, std::move(deletion->traces),
        events.size() == 1 ? events.front().title + " is in your calendar again"
                           : std::to_string(events.size()) + " events are in your calendar again");
    deletion->reply->answer(result);
}

void removeNext(const SharedPointer& shared, const DeletionPointer& deletion)
{
    if (deletion->done == deletion->ids.size())
        return answerDeleted(shared, deletion);
    shared->agenda.remove(deletion->ids[deletion->done], deletion->scope, shared->context.calendar,
        shared->context.now(), [shared, deletion](const AgendaVerdict& removed) {
            deletion->problem = removed.problem;
            if (!removed.problem.empty())
                return answerDeleted(shared, deletion);
            if (removed.trace)
                deletion->traces.push_back(*removed.trace);
            ++deletion->done;
            removeNext(shared, deletion);
        });
}

void settle(const SharedPointer& shared, const DeletionPointer& deletion)
{
    const std::string question = deletionQuestion(deletion->events, deletion->scope, answersNow(shared));
    if (!shared->context.consent)
        return askFirst(shared, *deletion, question, PendingConsent::Answer::none);
    shared->context.consent->settleWhenHeard(question, [shared, question, deletion](PendingConsent::Answer heard) {
        if (heard == PendingConsent::Answer::yes)
            removeNext(shared, deletion);
        else
            askFirst(shared, *deletion, question, heard);
    });
}

void findNext(const SharedPointer& shared, const DeletionPointer& deletion)
{
    if (deletion->events.size() == deletion->ids.size())
        return settle(shared, deletion);
    shared->agenda.find(deletion->ids[deletion->events.size()], shared->context.calendar,
        [shared, deletion](const AgendaVerdict& found) {
            if (!found.event)
                return deletion->reply->fail(found.problem);
            deletion->events.push_back(*found.event);
            findNext(shared, deletion);
        });
}

/// "Lunch is as it was, on Friday 27 November at 1 PM"
std::string restoredWords(const CalendarEvent& event, const EventAnswers& answers)
{
    return event.title + " is as it was, on " + answers.when(event);
}

void makeChange(const SharedPointer& shared, const EventID& id, EventScope scope, const Json& changes,
    const CalendarEvent& before, const std::shared_ptr<ToolReply>& answer)
{
    const auto read = EventArguments::change(changes, before, shared->context.calendar);
    if (!read.problem.empty())
        return answer->fail("Nothing was changed: " + read.problem);
    shared->agenda.change(id, scope, read.change, shared->context.calendar, shared->context.now(),
        [shared, before, answer](const AgendaVerdict& verdict) {
            if (!verdict.event)
                return answer->fail(verdict.problem);
            ToolResult result(ToolStatus::changed);
            offerUndo(shared, result, tracesOf(verdict), restoredWords(before, answersNow(shared)));
            answerWithConflicts(shared, std::move(result), *verdict.event, answer);
        });
}

void changeEvent(const SharedPointer& shared, const LiveFunctionCall& call, ToolReply reply)
{
    if (takesBack(shared, call, reply))
        return;
    const auto ids = EventArguments::ids(call.args);
    if (!ids.problem.empty())
        return reply.fail("Nothing was changed: " + ids.problem);
    const bool isSeries = readBool(call.args, "series").value_or(false);
    const EventScope scope = isSeries ? EventScope::series : EventScope::occurrence;
    const Json* changes = memberOf(call.args, "changes");
    const bool hasChanges = changes && changes->is_object() && !changes->empty();
    const bool cancels = readBool(call.args, "cancel").value_or(false);
    if (cancels == hasChanges)
        return reply.fail("Nothing was changed: give either changes or cancel.");
    const auto answer = std::make_shared<ToolReply>(std::move(reply));
    if (cancels)
        return findNext(shared, std::make_shared<Deletion>(Deletion{.ids = ids.ids, .scope = scope, .reply = answer}));
    if (ids.ids.size() > 1)
        return answer->fail("Nothing was changed: ids goes with cancel only. Change one event a call.");
    shared->agenda.find(ids.ids.front(), shared->context.calendar,
        [shared, id = ids.ids.front(), scope, changes = *changes, answer](const AgendaVerdict& found) {
            if (found.event)
                makeChange(shared, id, scope, changes, *found.event, answer);
            else
                answer->fail(found.problem);
        });
}

} // namespace

void registerAgendaTools(ToolRegistry& registry, Agenda& agenda, Notebook& notebook, AgendaToolContext context)
{
    const auto shared = std::make_shared<Shared>(Shared{agenda, notebook, std::move(context)});
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
