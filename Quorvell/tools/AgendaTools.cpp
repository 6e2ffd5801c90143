// SPDX-License-Identifier: MIT
#include "Quorvell/tools/AgendaTools.h"

#include "Quorvell/tools/EventAnswers.h"
#include "Quorvell/tools/EventArguments.h"

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

void whatsOn(const SharedPointer& shared, const LiveFunctionCall& call, ToolReply reply)
{
    const auto stretch = EventArguments::stretch(call.args, days(0), shared->context.now(), shared->context.calendar);
    if (!stretch.problem.empty())
        return reply.fail(stretch.problem);
    const auto answer = std::make_shared<ToolReply>(std::move(reply));
    shared->agenda.read(
        stretch.from, stretch.to, shared->context.calendar, [shared, stretch, answer](const AgendaReading& reading) {
            if (!reading.isWhole && reading.events.empty())
                return answer->fail("What is on is not known: " + joined(reading.problems));
            const EventAnswers answers(shared->context.now(), shared->context.calendar);
            ToolResult result =
                answers.agenda(reading.events, shared->notebook.visibleToQuorvell(), stretch.from, stretch.to);
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
            if (verdict.event)
                answerWithConflicts(shared, added, *verdict.event, answer);
            else
                answer->fail(verdict.problem);
        });
}

std::string deletionQuestion(const CalendarEvent& event, EventScope scope, const EventAnswers& answers)
{
    const std::string what = "“" + event.title + "” on " + answers.when(event);
    return event.repeats && scope == EventScope::series ? "Shall I delete " + what + " and every other time of it?"
                                                        : "Shall I delete " + what + "?";
}

void askFirst(const SharedPointer& shared, const CalendarEvent& event, const std::string& question,
    PendingConsent::Answer answer, const std::shared_ptr<ToolReply>& reply)
{
    if (shared->context.consent)
        shared->context.consent->ask(question);
    ToolResult result(ToolStatus::needsConfirmation);
    result.addAll(EventAnswers(shared->context.now(), shared->context.calendar).event(event)).ask(question);
    reply->answer(result.advise(answer == PendingConsent::Answer::none
            ? "Nothing is deleted yet. Ask the question word for word, as the last thing that you say, and call again "
              "with the same arguments once they have said yes."
            : "Nothing is deleted: no clear yes to this very question was heard. If they want to keep the event, leave "
              "it. Otherwise say the question word for word and nothing besides it, and call once more after their "
              "yes."));
}

void removeEvent(const SharedPointer& shared, const EventID& id, EventScope scope, const CalendarEvent& event,
    const std::shared_ptr<ToolReply>& reply)
{
    shared->agenda.remove(id, scope, shared->context.calendar, shared->context.now(),
        [shared, reply, event](const AgendaVerdict& removed) {
            if (!removed.problem.empty())
                return reply->fail(removed.problem);
            const EventAnswers later(shared->context.now(), shared->context.calendar);
            reply->answer(ToolResult(ToolStatus::deleted).addAll(later.event(event)));
        });
}

void cancelEvent(const SharedPointer& shared, const EventID& id, EventScope scope, ToolReply reply)
{
    const auto answer = std::make_shared<ToolReply>(std::move(reply));
    const auto& calendar = shared->context.calendar;
    shared->agenda.find(id, calendar, [shared, id, scope, answer](const AgendaVerdict& found) {
        if (!found.event)
            return answer->fail(found.problem);
        const EventAnswers answers(shared->context.now(), shared->context.calendar);
        const std::string question = deletionQuestion(*found.event, scope, answers);
        if (!shared->context.consent)
            return askFirst(shared, *found.event, question, PendingConsent::Answer::none, answer);
        shared->context.consent->settleWhenHeard(
            question, [shared, id, scope, question, answer, event = *found.event](PendingConsent::Answer heard) {
                if (heard == PendingConsent::Answer::yes)
                    removeEvent(shared, id, scope, event, answer);
                else
                    askFirst(shared, event, question, heard, answer);
            });
    });
}

void changeEvent(const SharedPointer& shared, const LiveFunctionCall& call, ToolReply reply)
{
    const auto id = EventID::parse(EventArguments::text(call.args, "id"));
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
            const auto read = EventArguments::change(changes, *found.event, shared->context.calendar);
            if (!read.problem.empty())
                return answer->fail("Nothing was changed: " + read.problem);
            shared->agenda.change(id, scope, read.change, shared->context.calendar, shared->context.now(),
                [shared, answer](const AgendaVerdict& verdict) {
                    if (verdict.event)
                        answerWithConflicts(shared, ToolResult(ToolStatus::changed), *verdict.event, answer);
                    else
                        answer->fail(verdict.problem);
                });
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
