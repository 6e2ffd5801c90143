// SPDX-License-Identifier: MIT
#include "LiveService/rules/FollowUpRules.h"

#include "LiveService/replies/PlainReplies.h"
#include "LiveService/replies/SpokenWhen.h"
#include "LiveService/replies/TaskWords.h"
#include "LiveService/rules/AgendaRules.h"
#include "LiveService/rules/Pointing.h"
#include "LiveService/rules/ReminderIntent.h"
#include "LiveService/rules/RequestReader.h"
#include "LiveService/rules/RequestText.h"
#include "LiveService/rules/SeriesWords.h"
#include "LiveService/rules/TimeChoicePicker.h"
#include "LiveService/rules/TimeWords.h"
#include "LiveService/rules/ToolRequests.h"
#include "QuorvellCore/text/Pattern.h"

#include <utility>

namespace quorvell {

namespace {

using Kind = PendingQuestion::Kind;
using Answer = std::optional<ToolRequests::Answer>;

/// Whether the words are a request of their own and no answer.
bool isNewRequest(Kind kind, const std::string& core, const RuleSurroundings& around)
{
    const auto request = RequestReader::read(core, around);
    if (!request)
        return false;
    if (const auto* change = std::get_if<ReminderChange>(&*request))
        return kind == Kind::confirm || !change->task.empty() || change->kind == ReminderChange::Kind::list;
    if (const auto* note = std::get_if<NoteIntent>(&*request))
        return note->kind != NoteIntent::Kind::readFound;
    const auto* reminder = std::get_if<ReminderIntent>(&*request);
    if (!reminder)
        return true;
    const auto phrase = TimeWords::phraseIn(reminder->text, around);
    if (kind == Kind::reminderTime || kind == Kind::whichTime)
        return !reminder->isBare && (!phrase || !phrase->task.empty());
    return kind != Kind::reminderTask || phrase.has_value();
}

Answer answerTime(
    const std::string& core, const PendingQuestion& asked, const RequestMemory& memory, const RuleSurroundings& around)
{
    const std::string time = ReminderIntent::timeAnswer(core);
    if (!TimeWords::phraseIn(time, around))
        return std::nullopt;
    if (!asked.tool.empty())
        return ToolRequests{around}.putOffAgain(asked.tool, asked.arguments, RequestText::withDigits(time));
    // The task as it was understood: what was wrong with the time is no longer in it.
    const auto task = TaskWords::of(asked.task, memory.request);
    const std::string request = task.text.empty() ? memory.request : "remind me " + task.link + " " + task.text;
    return ToolRequests{around}.remindFromWords(request + " " + time, asked.repeat);
}

Answer answerWhichTime(
    const std::string& core, const PendingQuestion& asked, const RequestMemory& memory, const RuleSurroundings& around)
{
    const ToolRequests requests{around};
    const auto phrase = TimeWords::phraseIn(core, around);
    const auto moment = SpokenMoment::read(core, around);
    if (phrase && phrase->hasTime && !phrase->isAmbiguous() && moment && moment->namesDay)
        return answerTime(core, asked, memory, around);
    const auto date = TimeChoicePicker::pick(RequestText::withDigits(core), asked.choices);
    if (!date)
        return std::nullopt;
    return asked.tool.empty() ? requests.remindSettled(asked.task, *date, asked.repeat)
                              : requests.putOffAgain(asked.tool, asked.arguments, SpokenWhen::fromDate(*date));
}

Answer answerTask(const std::string& core, const PendingQuestion& asked, const RuleSurroundings& around)
{
    const std::string task = ReminderIntent::taskAnswer(core);
    if (task.empty())
        return std::nullopt;
    return ToolRequests{around}.remindSettled(task, asked.date, asked.repeat);
}

Answer answerEventTime(const std::string& core, const PendingQuestion& asked, const RuleSurroundings& around)
{
    const std::string words = ReminderIntent::timeAnswer(core);
    const auto start = SpokenMoment::movedTo(words, asked.date, around);
    return start ? Answer(ToolRequests{around}.addEvent({.title = asked.task, .start = *start, .repeat = asked.repeat}))
                 : std::nullopt;
}

Answer answerNewEventTime(
    const std::string& core, const PendingQuestion& asked, RequestMemory& memory, const RuleSurroundings& around)
{
    const auto found = TimeWords::atEnd(ReminderIntent::timeAnswer(core), around);
    if (!found || !found->rest.empty())
        return std::nullopt;
    memory.wish = {.kind = EventWish::Kind::move, .title = asked.task, .when = found->time};
    return ToolRequests{around}.whatsOn(SpokenDays::ahead(around));
}

Answer answerWhichNote(const std::string& core, const RequestMemory& memory, const RuleSurroundings& around)
{
    const auto note = Pointing::at(memory.found, core, around);
    return note ? Answer(ToolRequests{around}.readNote(note->id)) : std::nullopt;
}

Answer answerWhichReminder(
    const std::string& core, const PendingQuestion& asked, const RequestMemory& memory, const RuleSurroundings& around)
{
    const auto reminder = Pointing::at(memory.found, core, around);
    return reminder ? Answer(ToolRequests{around}.chosen(asked.tool, asked.arguments, reminder->id)) : std::nullopt;
}

std::optional<RuleStep> answerWhichEvent(
    const std::string& core, const RequestMemory& memory, const RuleSurroundings& around)
{
    const auto event = Pointing::at(memory.found, core, around);
    return event ? std::optional(AgendaRules::carryOut(*event, memory, around)) : std::nullopt;
}

std::optional<RuleStep> answerOccurrences(const std::string& core, RequestMemory memory, const RuleSurroundings& around)
{
    memory.wish.scope = SeriesWords::answer(core);
    if (memory.wish.scope == EventWish::Scope::open || memory.found.empty())
        return std::nullopt;
    const FoundThing event = memory.found.front();
    return AgendaRules::carryOut(event, std::move(memory), around);
}

Answer answerKeepOrRemind(
    const std::string& core, const std::string& task, RequestMemory& memory, const ToolRequests& requests)
{
    static const Pattern reminding("\\bremind(?:er|ers)?\\b|\\bsecond\\b", Pattern::Case::insensitive);
    static const Pattern keeping("\\b(?:write|note|keep|down|yes|first|save)\\b", Pattern::Case::insensitive);
    if (reminding.find(core)) {
        memory.request = "remind me to " + task;
        return requests.remindFromWords(memory.request);
    }
    return keeping.find(core) ? Answer(requests.keep(NoteIntent::titleFor(task), RequestText::written(task)))
                              : std::nullopt;
}

/// The request that follows from an answer, and what it changes in `memory`.
Answer requestFor(
    const std::string& core, const PendingQuestion& asked, RequestMemory& memory, const RuleSurroundings& around)
{
    const ToolRequests requests{around};
    switch (asked.kind) {
    case Kind::whichTime:
        return answerWhichTime(core, asked, memory, around);
    case Kind::reminderTime:
        return answerTime(core, asked, memory, around);
    case Kind::reminderTask:
        return answerTask(core, asked, around);
    case Kind::wholeReminder:
        memory.request = "remind me " + core;
        return requests.remindFromWords(memory.request);
    case Kind::whichNote:
        return answerWhichNote(core, memory, around);
    case Kind::noteText:
        return requests.keep(NoteIntent::titleFor(core), RequestText::written(core));
    case Kind::whichReminder:
        return answerWhichReminder(core, asked, memory, around);
    case Kind::eventTime:
        return answerEventTime(core, asked, around);
    case Kind::newEventTime:
        return answerNewEventTime(core, asked, memory, around);
    case Kind::keepOrRemind:
        return answerKeepOrRemind(core, asked.task, memory, requests);
    case Kind::noteTopic:
        memory.purpose = RequestMemory::SearchPurpose::read;
        return requests.find(core, 0);
    case Kind::confirm: // A clear yes was looked for before; anything else is none.
    case Kind::none:
    case Kind::eventTitle:
    case Kind::whichEvent:
    case Kind::occurrences:
        break;
    }
    return std::nullopt;
}

std::optional<RuleStep> stepFor(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings& around)
{
    if (asked.kind == Kind::eventTitle)
        return AgendaRules::answer({.kind = AgendaIntent::Kind::add,
                                       .title = ReminderIntent::taskAnswer(core),
                                       .start = asked.date,
                                       .repeat = asked.repeat},
            std::move(memory), around);
    if (asked.kind == Kind::whichEvent)
        return answerWhichEvent(core, memory, around);
    if (asked.kind == Kind::occurrences)
        return answerOccurrences(core, std::move(memory), around);
    auto request = requestFor(core, asked, memory, around);
    return request ? std::optional(RuleStep{std::move(*request), std::move(memory)}) : std::nullopt;
}

} // namespace

std::optional<RuleStep> FollowUpRules::answer(
    std::string_view words, RequestMemory& memory, const RuleSurroundings& around)
{
    const std::string core(words);
    PendingQuestion asked = std::exchange(memory.pending, {});
    if (isNewRequest(asked.kind, core, around))
        return std::nullopt;
    if (auto step = stepFor(core, asked, memory, around))
        return step;
    if (asked.misses >= PendingQuestion::patience)
        return std::nullopt;
    ++asked.misses;
    const std::string again = std::string(PlainReplies::notUnderstood) + " " + asked.question;
    memory.pending = std::move(asked);
    return RuleStep{again, memory};
}

} // namespace quorvell
