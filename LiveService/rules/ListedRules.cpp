// SPDX-License-Identifier: MIT
#include "LiveService/rules/ListedRules.h"

#include "LiveService/replies/AgendaReply.h"
#include "LiveService/replies/PlainReplies.h"
#include "LiveService/rules/AgendaRules.h"
#include "LiveService/rules/ToolRequests.h"

#include <utility>
#include <variant>

namespace quorvell {

namespace {

using Kind = PendingQuestion::Kind;
using Topic = RequestMemory::Topic;

/// The words by which a request names what it changes.
std::string nameIn(const Request& request)
{
    if (const auto* change = std::get_if<ReminderChange>(&request))
        return change->task;
    const auto* intent = std::get_if<AgendaIntent>(&request);
    const bool changes =
        intent && (intent->kind == AgendaIntent::Kind::move || intent->kind == AgendaIntent::Kind::cancel);
    return changes ? intent->title : std::string();
}

void talkAbout(const FoundThing& thing, RequestMemory& memory)
{
    if (thing.kind == FoundThing::Kind::event) {
        memory.event = thing;
        memory.topic = Topic::event;
    } else {
        memory.reminder = thing.id;
        memory.reminderDate = thing.start;
        memory.topic = Topic::reminder;
    }
}

/// The request, whichever kind of thing it was taken to be about, as a wish.
EventWish wishIn(const Request& request)
{
    if (const auto* change = std::get_if<ReminderChange>(&request)) {
        const bool isLater = change->kind == ReminderChange::Kind::later;
        return {.kind = isLater ? EventWish::Kind::move : EventWish::Kind::cancel, .when = change->when};
    }
    const auto& intent = std::get<AgendaIntent>(request);
    return {.kind = intent.kind == AgendaIntent::Kind::move ? EventWish::Kind::move : EventWish::Kind::cancel,
        .when = intent.when,
        .minutes = intent.minutes,
        .scope = intent.scope};
}

RuleStep changeReminder(
    const EventWish& wish, const FoundThing& thing, RequestMemory memory, const RuleSurroundings& around)
{
    const bool lacksTime = wish.when.empty() && wish.minutes <= 0;
    if (wish.kind == EventWish::Kind::move && lacksTime)
        return {"Please say at what time the reminder should come instead.", std::move(memory)};
    const auto call = AgendaRules::changeReminder({}, wish, around);
    const auto* request = std::get_if<ToolRequest>(&call);
    memory.request.clear();
    if (!request)
        return {call, std::move(memory)};
    return {ToolRequests{around}.chosen(request->name, request->arguments, thing.id), std::move(memory)};
}

RuleStep changeEvent(
    const EventWish& wish, const FoundThing& thing, RequestMemory memory, const RuleSurroundings& around)
{
    const auto length = SpokenLength::read(wish.when);
    AgendaIntent intent{.kind = AgendaIntent::Kind::cancel, .scope = wish.scope};
    if (wish.kind == EventWish::Kind::move) {
        intent.kind = AgendaIntent::Kind::move;
        intent.minutes = length ? length->minutes : wish.minutes;
        intent.when = length ? std::string() : wish.when;
        // The time is asked for, and the answer needs a name.
        intent.title = intent.minutes == 0 && intent.when.empty() ? thing.title : std::string();
    }
    return AgendaRules::answer(intent, std::move(memory), around);
}

} // namespace

std::optional<RuleStep> ListedRules::change(
    const Request& request, const RequestMemory& remembering, const RuleSurroundings& around)
{
    RequestMemory memory = remembering;
    const auto place = ListPlace::read(nameIn(request));
    if (!place || memory.found.empty())
        return std::nullopt;
    const auto index = place->among(memory.found.size());
    if (!index)
        return RuleStep{std::string(PlainReplies::notThatMany), std::move(memory)};
    const FoundThing thing = memory.found[*index];
    if (thing.kind == FoundThing::Kind::note)
        return RuleStep{std::string(PlainReplies::cannotDelete), std::move(memory)};
    talkAbout(thing, memory);
    const EventWish wish = wishIn(request);
    if (thing.kind == FoundThing::Kind::reminder)
        return changeReminder(wish, thing, std::move(memory), around);
    return changeEvent(wish, thing, std::move(memory), around);
}

RuleStep ListedRules::read(const NoteIntent& intent, RequestMemory memory, const RuleSurroundings& around)
{
    const std::size_t count = memory.found.size();
    const auto only = count == 1 ? std::optional<std::size_t>(0) : std::nullopt;
    const auto index = intent.place ? intent.place->among(count) : only;
    if (count == 0)
        return RuleStep::asking({.kind = Kind::noteTopic, .question = "What are you looking for?"}, std::move(memory));
    const bool isOfNotes = memory.found.front().kind == FoundThing::Kind::note;
    const std::string_view which = intent.place ? PlainReplies::notThatMany : PlainReplies::whichOne;
    if (!index)
        return isOfNotes
            ? RuleStep::asking({.kind = Kind::whichNote, .question = "Which one should I read?"}, std::move(memory))
            : RuleStep{std::string(which), std::move(memory)};
    const FoundThing thing = memory.found[*index];
    if (isOfNotes)
        return {ToolRequests{around}.readNote(thing.id), std::move(memory)};
    talkAbout(thing, memory);
    return {AgendaReply::named(thing) + ".", std::move(memory)};
}

} // namespace quorvell
