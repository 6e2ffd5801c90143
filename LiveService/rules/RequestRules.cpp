// SPDX-License-Identifier: MIT
#include "LiveService/rules/RequestRules.h"

#include "LiveService/replies/PlainReplies.h"
#include "LiveService/replies/ReplyWording.h"
#include "LiveService/rules/AgendaRules.h"
#include "LiveService/rules/FollowUpRules.h"
#include "LiveService/rules/ListedRules.h"
#include "LiveService/rules/ReminderRules.h"
#include "LiveService/rules/RequestReader.h"
#include "LiveService/rules/RequestText.h"
#include "LiveService/rules/SmallTalk.h"
#include "LiveService/rules/ToolRequests.h"
#include "LiveService/rules/ToolResultRules.h"
#include "QuorvellCore/live/history/ModeIntent.h"
#include "QuorvellCore/safety/SpokenConsent.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace quorvell {

namespace {

using Kind = PendingQuestion::Kind;
using Purpose = RequestMemory::SearchPurpose;
using Topic = RequestMemory::Topic;

constexpr int listLength = 20;

RuleStep say(std::string text, RequestMemory memory)
{
    memory.lastReply = text;
    return {std::move(text), std::move(memory)};
}

/// What is said, be it by the rules themselves or in place of a tool that is not offered, can be repeated.
RuleStep remembered(RuleStep step)
{
    if (const auto* text = std::get_if<std::string>(&step.answer))
        step.memory.lastReply = *text;
    return step;
}

RuleStep keepNote(const NoteIntent& intent, RequestMemory memory, const ToolRequests& requests)
{
    if (intent.text.empty())
        return RuleStep::asking(
            {.kind = Kind::noteText, .question = "What do you want to write down?"}, std::move(memory));
    const std::string title = intent.title.empty() ? NoteIntent::titleFor(intent.text) : intent.title;
    return {requests.keep(title, intent.text), std::move(memory)};
}

RuleStep search(const NoteIntent& intent, RequestMemory memory, const ToolRequests& requests)
{
    memory.purpose = intent.purpose;
    const int limit = intent.purpose == Purpose::listNotes ? listLength : intent.purpose == Purpose::readNewest ? 1 : 0;
    return {requests.find(intent.text, limit), std::move(memory)};
}

RuleStep answerNote(const NoteIntent& intent, RequestMemory memory, const RuleSurroundings& around)
{
    const ToolRequests requests{around};
    switch (intent.kind) {
    case NoteIntent::Kind::keep:
        return keepNote(intent, std::move(memory), requests);
    case NoteIntent::Kind::search:
        return search(intent, std::move(memory), requests);
    case NoteIntent::Kind::readFound:
        break;
    }
    return ListedRules::read(intent, std::move(memory), around);
}

struct Answering {
    RequestMemory memory;
    const RuleSurroundings& around;

    RuleStep operator()(const AgendaIntent& intent) { return AgendaRules::answer(intent, std::move(memory), around); }
    RuleStep operator()(const ReminderChange& change)
    {
        return ReminderRules::change(change, std::move(memory), around);
    }
    RuleStep operator()(const ReminderIntent& intent) { return ReminderRules::set(intent, std::move(memory), around); }
    RuleStep operator()(const NoteIntent& intent) { return answerNote(intent, std::move(memory), around); }
    RuleStep operator()(const FactIntent& intent)
    {
        return {ToolRequests{around}.remember(intent.fact), std::move(memory)};
    }
    RuleStep operator()(const AnotherIntent& intent)
    {
        const ToolRequests requests{around};
        if (memory.topic == Topic::reminder && !memory.reminderDate.empty())
            return {
                requests.remindSettled(RequestText::written(intent.words), memory.reminderDate, {}), std::move(memory)};
        if (memory.topic == Topic::note)
            return {requests.keep(NoteIntent::titleFor(intent.words), RequestText::written(intent.words)),
                std::move(memory)};
        return RuleStep::asking({.kind = Kind::keepOrRemind,
                                    .question = "Should I write that down, or remind you of it?",
                                    .task = intent.words},
            std::move(memory));
    }
    RuleStep operator()(NotebookIntent intent)
    {
        if (intent == NotebookIntent::open)
            return {ToolRequests{around}.openNotebook(), std::move(memory)};
        return say(std::string(PlainReplies::cannotDelete), std::move(memory));
    }
};

RuleStep answerRequest(const std::string& core, RequestMemory memory, const RuleSurroundings& around)
{
    const auto request = RequestReader::read(core, around);
    if (!request)
        return say(PlainReplies::cannot(around.tools), std::move(memory));
    if (auto step = ListedRules::change(*request, memory, around))
        return *std::move(step);
    return std::visit(Answering{std::move(memory), around}, *request);
}

bool isUndoable(Topic topic)
{
    return topic == Topic::event || topic == Topic::reminder || topic == Topic::note;
}

/// "Cancel that", of what was last set or kept.
RuleStep undo(RequestMemory memory, const RuleSurroundings& around)
{
    const ToolRequests requests{around};
    switch (memory.topic) {
    case Topic::event:
        // What was set as a series goes as one.
        if (memory.event.repeats && memory.wish.scope == EventWish::Scope::open)
            memory.wish.scope = EventWish::Scope::all;
        return {requests.cancelEvent(memory.event.id, memory.wish.scope), std::move(memory)};
    case Topic::reminder:
        return {requests.chosen("set_reminder", "{\"done\":true}", memory.reminder), std::move(memory)};
    case Topic::note:
    case Topic::none:
    case Topic::events:
    case Topic::freeTime:
        break;
    }
    return say(std::string(PlainReplies::cannotDelete), std::move(memory));
}

/// What "it" means from now on.
void noteTopic(const ToolRequest& call, std::string_view result, RequestMemory& memory)
{
    if (const auto reminder = ToolResultRules::reminderIn(result);
        call.name == "set_reminder" && !reminder.id.empty()) {
        const bool isOver = ToolResultRules::endsReminder(result);
        memory.reminder = isOver ? "" : reminder.id;
        memory.reminderDate = isOver ? "" : reminder.date;
        memory.topic = isOver ? Topic::none : Topic::reminder;
    }
    if (call.name == "add_event" || call.name == "change_event") {
        memory.event = ToolResultRules::eventIn(result);
        memory.topic = memory.event.id.empty() ? memory.topic : Topic::event;
    }
    if (call.name == "keep_note")
        memory.topic = Topic::note;
}

/// What "the second one" points into from now on: what was told, and nothing behind it.
void noteList(const ToolRequest& call, std::string_view result, RequestMemory& memory)
{
    std::vector<FoundThing> things = call.name == "whats_on" ? ToolResultRules::agendaIn(result)
        : call.name == "set_reminder"                        ? ToolResultRules::remindersIn(result)
                                                             : std::vector<FoundThing>();
    if (things.empty() && call.name != "whats_on")
        return;
    memory.found = std::move(things);
    if (memory.pending.kind != Kind::none)
        return;
    if (call.name == "set_reminder")
        std::erase_if(memory.found, [&](const FoundThing& thing) { return !memory.tellsOf(thing.start); });
    memory.found.resize(std::min(memory.found.size(), RequestMemory::mostTold));
}

/// The note to read at once, when that is what the search was for.
std::optional<std::string> noteToRead(const RequestMemory& memory)
{
    const bool isOne = memory.purpose == Purpose::read && memory.found.size() == 1;
    const bool isNewest = memory.purpose == Purpose::readNewest && !memory.found.empty();
    return isOne || isNewest ? std::optional(memory.found.front().id) : std::nullopt;
}

} // namespace

RuleStep RequestRules::answerWords(
    std::string_view words, const RequestMemory& remembering, const RuleSurroundings& around)
{
    RequestMemory memory = remembering;
    const std::string core = RequestText::withoutClosing(RequestText::withoutOpening(words));
    if (memory.pending.kind == Kind::confirm && SpokenConsent::agreesTo(memory.pending.question, words)) {
        const PendingQuestion asked = std::exchange(memory.pending, {});
        return {ToolRequests{around}.confirmed(asked.tool, asked.arguments), std::move(memory)};
    }
    if (SmallTalk::isUndo(core) && memory.pending.kind == Kind::none && isUndoable(memory.topic))
        return remembered(undo(std::move(memory), around));
    if (SmallTalk::isCancel(core)) {
        const bool wasAsking = std::exchange(memory.pending, {}).kind != Kind::none;
        return say(wasAsking ? std::string(PlainReplies::dropped) : "Okay.", std::move(memory));
    }
    // Small talk leaves an open question open.
    if (const auto text = SmallTalk::answer(core, memory.lastReply, around))
        return say(*text, std::move(memory));
    if (const auto mode = ModeIntent::requested(words); mode && around.offers("set_mode"))
        return {ToolRequests{around}.setMode(nameOf(*mode)), std::move(memory)};
    if (memory.pending.kind != Kind::none) {
        if (auto step = FollowUpRules::answer(core, memory, around))
            return remembered(std::move(*step));
    }
    return remembered(answerRequest(core, std::move(memory), around));
}

RuleStep RequestRules::answerResult(
    const ToolRequest& call, std::string_view result, const RequestMemory& remembering, const RuleSurroundings& around)
{
    RequestMemory memory = remembering;
    if (call.name == "whats_on") {
        if (auto step = AgendaRules::afterList(result, memory, around))
            return remembered(std::move(*step));
    }
    // Nothing is due: then the reminder that was just talked about is meant.
    if (!memory.reminder.empty() && ToolResultRules::foundNothingDue(call, result))
        return {ToolRequests{around}.chosen(call.name, call.arguments, memory.reminder), std::move(memory)};
    std::string reply = ReplyWording::reply(call, result, memory);
    noteTopic(call, result, memory);
    if (call.name == "set_reminder")
        memory.pending = ToolResultRules::questionIn(call, result, reply);
    if (memory.pending.kind == Kind::none)
        memory.pending = ToolResultRules::questionOf(call, result, reply);
    noteList(call, result, memory);
    if (call.name == "find_in_notebook") {
        memory.found = ToolResultRules::notesIn(result);
        const auto id = noteToRead(memory);
        if (id && around.offers("read_note"))
            return {ToolRequests{around}.readNote(*id), std::move(memory)};
        if (memory.found.size() > 1)
            memory.pending = {.kind = Kind::whichNote, .question = "Which one should I read?"};
    }
    return say(std::move(reply), std::move(memory));
}

} // namespace quorvell
