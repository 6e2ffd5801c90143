#include "LiveService/rules/FollowUpRules.h"

#include "LiveService/replies/PlainReplies.h"
#include "LiveService/replies/SpokenWhen.h"
#include "LiveService/replies/TaskWords.h"
#include "LiveService/rules/AgendaRules.h"
#include "LiveService/rules/ReminderIntent.h"
#include "LiveService/rules/RequestReader.h"
#include "LiveService/rules/RequestText.h"
#include "LiveService/rules/TimeChoicePicker.h"
#include "LiveService/rules/TimeWords.h"
#include "LiveService/rules/ToolRequests.h"
#include "QuorvellCore/reminders/ReminderPhrase.h"
#include "QuorvellCore/text/Pattern.h"
#include "QuorvellCore/text/TextMatch.h"

#include <utility>
#include <vector>

namespace quorvell {

namespace {

using Kind = PendingQuestion::Kind;
using Answer = std::optional<ToolRequests::Answer>;

std::optional<ReminderPhrase> phraseIn(const std::string& words, const RuleSurroundings& around)
{
    return ReminderPhrase::parse(RequestText::withDigits(words), around.now, around.calendar);
}

bool namesDay(const std::string& words)
{
    static const Pattern day(
        "\\b(?:today|tonight|tomorrow|(?:mon|tues|wednes|thurs|fri|satur|sun)day|next|in \\d+"
        "|january|february|march|april|may|june|july|august|september|october|november|december)\\b",
        Pattern::Case::insensitive);
    return day.find(words).has_value();
}

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
    const auto phrase = phraseIn(reminder->text, around);
    if (kind == Kind::reminderTime || kind == Kind::whichTime)
        return !reminder->isBare && (!phrase || !phrase->task.empty());
    return kind != Kind::reminderTask || phrase.has_value();
}

Answer answerTime(const std::string& core, const RequestMemory& memory, const RuleSurroundings& around)
{
    const std::string time = ReminderIntent::timeAnswer(core);
    if (!phraseIn(time, around))
        return std::nullopt;
    const PendingQuestion& asked = memory.pending;
    if (!asked.tool.empty())
        return ToolRequests{around}.putOffAgain(asked.tool, asked.arguments, RequestText::withDigits(time));
    // The task as it was understood: what was wrong with the time is no longer in it.
    const auto task = TaskWords::of(memory.pending.task, memory.request);
    const std::string request = task.text.empty() ? memory.request : "remind me " + task.link + " " + task.text;
    return ToolRequests{around}.remindFromWords(request + " " + time, memory.pending.repeat);
}

Answer answerWhichTime(const std::string& core, const RequestMemory& memory, const RuleSurroundings& around)
{
    const PendingQuestion& asked = memory.pending;
    const ToolRequests requests{around};
    const auto phrase = phraseIn(core, around);
    if (namesDay(core) && phrase && phrase->hasTime && !phrase->isAmbiguous())
        return answerTime(core, memory, around);
    const auto date = TimeChoicePicker::pick(RequestText::withDigits(core), asked.choices);
    if (!date)
        return std::nullopt;
    return asked.tool.empty() ? requests.remindSettled(asked.task, *date, asked.repeat)
                              : requests.putOffAgain(asked.tool, asked.arguments, SpokenWhen::fromDate(*date));
}

Answer answerTask(const std::string& core, const RequestMemory& memory, const RuleSurroundings& around)
{
    const std::string task = ReminderIntent::taskAnswer(core);
    if (task.empty())
        return std::nullopt;
    return ToolRequests{around}.remindSettled(task, memory.pending.date, memory.pending.repeat);
}

Answer answerEventTime(const std::string& core, const PendingQuestion& asked, const RuleSurroundings& around)
{
    const std::string words = ReminderIntent::timeAnswer(core);
    const auto moment = SpokenMoment::read(words, around);
    return moment ? Answer(ToolRequests{around}.addEvent(asked.task, moment->date, {}, 0)) : std::nullopt;
}

Answer answerNewEventTime(const std::string& core, RequestMemory& memory, const RuleSurroundings& around)
{
    const auto found = TimeWords::atEnd(ReminderIntent::timeAnswer(core), around);
    if (!found || !found->rest.empty())
        return std::nullopt;
    memory.wish = {.kind = EventWish::Kind::move, .title = memory.pending.task, .when = found->time};
    return ToolRequests{around}.whatsOn(SpokenDays::ahead(around));
}

/// Which of `count` things the words point at by their place.
std::optional<std::size_t> placeIn(const std::string& core, std::size_t count)
{
    const auto choice = NoteIntent::readChoice(core);
    if (!choice || count == 0)
        return std::nullopt;
    const int last = static_cast<int>(count) - 1;
    const int index = choice->index == NoteIntent::lastIndex ? last : choice->index;
    return index >= 0 && index <= last ? std::optional(static_cast<std::size_t>(index)) : std::nullopt;
}

Answer answerWhichEvent(const std::string& core, const RequestMemory& memory, const RuleSurroundings& around)
{
    auto index = placeIn(core, memory.events.size());
    if (!index)
        index = AgendaRules::named(memory.events, core);
    return index ? AgendaRules::carryOut(memory, *index, around) : std::nullopt;
}

/// "the one about the garden": the only note whose title holds the words.
const FoundNote* noteNamed(const std::string& core, const std::vector<FoundNote>& found)
{
    static const Pattern filler(
        "^(?:read(?: me)?(?: out)?|the|one|note|about|called|with|on)\\s+", Pattern::Case::insensitive);
    std::string words = TextMatch::normalized(core);
    for (auto match = filler.find(words); match; match = filler.find(words))
        words.erase(0, match->range.end);
    const FoundNote* named = nullptr;
    for (const FoundNote& note : found) {
        if (words.empty() || TextMatch::normalized(note.title).find(words) == std::string::npos)
            continue;
        if (named)
            return nullptr;
        named = &note;
    }
    return named;
}

Answer answerWhichNote(const std::string& core, const RequestMemory& memory, const RuleSurroundings& around)
{
    const auto& found = memory.found;
    const ToolRequests requests{around};
    if (const auto choice = NoteIntent::readChoice(core)) {
        const auto count = static_cast<int>(found.size());
        const int index = choice->index == NoteIntent::lastIndex ? count - 1 : choice->index;
        return index >= 0 && index < count ? Answer(requests.readNote(found[static_cast<std::size_t>(index)].id))
                                           : std::nullopt;
    }
    const FoundNote* named = noteNamed(core, found);
    return named ? Answer(requests.readNote(named->id)) : std::nullopt;
}

Answer answerWhichReminder(const std::string& core, const RequestMemory& memory, const RuleSurroundings& around)
{
    const auto index = placeIn(core, memory.found.size());
    const FoundNote* chosen = index ? &memory.found[*index] : noteNamed(core, memory.found);
    if (!chosen)
        return std::nullopt;
    return ToolRequests{around}.chosen(memory.pending.tool, memory.pending.arguments, chosen->id);
}

Answer answerKeepOrRemind(const std::string& core, RequestMemory& memory, const ToolRequests& requests)
{
    static const Pattern reminding("\\bremind(?:er|ers)?\\b|\\bsecond\\b", Pattern::Case::insensitive);
    static const Pattern keeping("\\b(?:write|note|keep|down|yes|first|save)\\b", Pattern::Case::insensitive);
    const std::string& task = memory.pending.task;
    if (reminding.find(core)) {
        memory.request = "remind me to " + task;
        return requests.remindFromWords(memory.request);
    }
    return keeping.find(core) ? Answer(requests.keep(NoteIntent::titleFor(task), RequestText::written(task)))
                              : std::nullopt;
}

Answer answerFor(const std::string& core, RequestMemory& memory, const RuleSurroundings& around)
{
    const ToolRequests requests{around};
    switch (memory.pending.kind) {
    case Kind::none:
        break;
    case Kind::whichTime:
        return answerWhichTime(core, memory, around);
    case Kind::reminderTime:
        return answerTime(core, memory, around);
    case Kind::reminderTask:
        return answerTask(core, memory, around);
    case Kind::wholeReminder:
        memory.request = "remind me " + core;
        return requests.remindFromWords(memory.request);
    case Kind::whichNote:
        return answerWhichNote(core, memory, around);
    case Kind::noteText:
        return requests.keep(NoteIntent::titleFor(core), RequestText::written(core));
    case Kind::confirm:
        break; // A clear yes was looked for before; anything else is none.
    case Kind::whichReminder:
        return answerWhichReminder(core, memory, around);
    case Kind::whichEvent:
        return answerWhichEvent(core, memory, around);
    case Kind::eventTime:
        return answerEventTime(core, memory.pending, around);
    case Kind::newEventTime:
        return answerNewEventTime(core, memory, around);
    case Kind::keepOrRemind:
        return answerKeepOrRemind(core, memory, requests);
    case Kind::eventTitle:
        return requests.addEvent(ReminderIntent::taskAnswer(core), memory.pending.date, {}, 0);
    case Kind::noteTopic:
        memory.purpose = RequestMemory::SearchPurpose::read;
        return requests.find(core, 0);
    }
    return std::nullopt;
}

} // namespace

std::optional<RuleStep> FollowUpRules::answer(
    std::string_view words, RequestMemory& memory, const RuleSurroundings& around)
{
    const std::string core(words);
    if (isNewRequest(memory.pending.kind, core, around)) {
        memory.pending = {};
        return std::nullopt;
    }
    if (auto settled = answerFor(core, memory, around)) {
        memory.pending = {};
        return RuleStep{std::move(*settled), memory};
    }
    if (memory.pending.misses >= PendingQuestion::patience) {
        memory.pending = {};
        return std::nullopt;
    }
    ++memory.pending.misses;
    return RuleStep{std::string(PlainReplies::notUnderstood) + " " + memory.pending.question, memory};
}

} // namespace quorvell
