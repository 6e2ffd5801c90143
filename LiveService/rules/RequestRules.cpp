#include "LiveService/rules/RequestRules.h"

#include "LiveService/replies/PlainReplies.h"
#include "LiveService/replies/ReplyWording.h"
#include "LiveService/rules/AgendaRules.h"
#include "LiveService/rules/FactWords.h"
#include "LiveService/rules/FollowUpRules.h"
#include "LiveService/rules/NoteIntent.h"
#include "LiveService/rules/ReminderChange.h"
#include "LiveService/rules/ReminderIntent.h"
#include "LiveService/rules/RequestText.h"
#include "LiveService/rules/SmallTalk.h"
#include "LiveService/rules/ToolRequests.h"
#include "LiveService/rules/ToolResultRules.h"
#include "QuorvellCore/live/history/ModeIntent.h"
#include "QuorvellCore/reminders/ReminderPhrase.h"
#include "QuorvellCore/safety/SpokenConsent.h"
#include "QuorvellCore/text/Pattern.h"

#include <optional>
#include <utility>

namespace quorvell {

namespace {

using Kind = PendingQuestion::Kind;
using Purpose = RequestMemory::SearchPurpose;

constexpr int listLength = 20;
constexpr std::size_t dayLength = 10; ///< "2026-11-22"

RuleStep say(std::string text, RequestMemory memory)
{
    memory.lastReply = text;
    return {std::move(text), std::move(memory)};
}

RuleStep ask(Kind kind, std::string question, RequestMemory memory)
{
    memory.pending = {.kind = kind, .question = question};
    return say(std::move(question), std::move(memory));
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
        return ask(Kind::noteText, "What do you want to write down?", std::move(memory));
    const std::string title = intent.title.empty() ? NoteIntent::titleFor(intent.text) : intent.title;
    return {requests.keep(title, intent.text), std::move(memory)};
}

RuleStep search(const NoteIntent& intent, RequestMemory memory, const ToolRequests& requests)
{
    memory.purpose = intent.purpose;
    const int limit = intent.purpose == Purpose::listNotes ? listLength : intent.purpose == Purpose::readNewest ? 1 : 0;
    return {requests.find(intent.text, limit), std::move(memory)};
}

RuleStep readFound(const NoteIntent& intent, RequestMemory memory, const ToolRequests& requests)
{
    const auto count = static_cast<int>(memory.found.size());
    int index = intent.index == NoteIntent::lastIndex ? count - 1 : intent.index;
    if (index == NoteIntent::onlyIndex && count == 1)
        index = 0;
    if (count == 0)
        return ask(Kind::noteTopic, "What are you looking for?", std::move(memory));
    if (index < 0 || index >= count)
        return ask(Kind::whichNote, "Which one should I read?", std::move(memory));
    auto request = requests.readNote(memory.found[static_cast<std::size_t>(index)].id);
    return {std::move(request), std::move(memory)};
}

RuleStep answerNote(const NoteIntent& intent, RequestMemory memory, const ToolRequests& requests)
{
    switch (intent.kind) {
    case NoteIntent::Kind::keep:
        return keepNote(intent, std::move(memory), requests);
    case NoteIntent::Kind::search:
        return search(intent, std::move(memory), requests);
    case NoteIntent::Kind::readFound:
        break;
    }
    return readFound(intent, std::move(memory), requests);
}

RuleStep changeReminder(const ReminderChange& change, RequestMemory memory, const RuleSurroundings& around)
{
    const ToolRequests requests{around};
    memory.request.clear();
    switch (change.kind) {
    case ReminderChange::Kind::done:
        return {requests.finishReminder(change.task), std::move(memory)};
    case ReminderChange::Kind::later:
        return {requests.putOffReminder(change.task, change.when), std::move(memory)};
    case ReminderChange::Kind::list:
        break;
    }
    const auto days = SpokenDays::read(change.days, around).value_or(SpokenDays{});
    memory.days = days.words;
    memory.firstDay = days.from.substr(0, dayLength);
    memory.lastDay = days.to.substr(0, dayLength);
    return {requests.listReminders(), std::move(memory)};
}

const char* nameOf(HelpMode mode)
{
    switch (mode) {
    case HelpMode::guide:
        return "guide";
    case HelpMode::auto_:
        return "auto";
    case HelpMode::do_:
        break;
    }
    return "do";
}

RuleStep answerReminder(const ReminderIntent& intent, RequestMemory memory, const ToolRequests& requests)
{
    if (intent.isBare)
        return ask(Kind::wholeReminder, "What do you want to be reminded of, and when?", std::move(memory));
    memory.request = intent.text;
    return {requests.remindFromWords(intent.text), std::move(memory)};
}

/// A request with a time but without the words that ask for a reminder.
std::optional<ReminderIntent> timedTask(const std::string& core, const RuleSurroundings& around)
{
    const auto phrase = ReminderPhrase::parse(RequestText::withDigits(core), around.now, around.calendar);
    return phrase ? ReminderIntent::readTimed(core, phrase->timeWords, phrase->task) : std::nullopt;
}

RuleStep answerRequest(const std::string& core, RequestMemory memory, const RuleSurroundings& around)
{
    static const Pattern notebook("^(?:open|show)(?: me)? (?:my|the) notebook$", Pattern::Case::insensitive);
    const ToolRequests requests{around};
    if (notebook.find(core) && around.offers("open_notebook"))
        return {requests.openNotebook(), std::move(memory)};
    if (const auto agenda = AgendaIntent::read(core, around))
        return AgendaRules::answer(*agenda, std::move(memory), around);
    if (const auto change = ReminderChange::read(core, around))
        return changeReminder(*change, std::move(memory), around);
    if (const auto fact = FactWords::read(core); fact && around.offers("remember_about_them"))
        return {requests.remember(*fact), std::move(memory)};
    if (const auto note = NoteIntent::read(core))
        return answerNote(*note, std::move(memory), requests);
    if (const auto reminder = ReminderIntent::read(core))
        return answerReminder(*reminder, std::move(memory), requests);
    if (const auto timed = timedTask(core, around))
        return answerReminder(*timed, std::move(memory), requests);
    return say(PlainReplies::cannot(around.tools), std::move(memory));
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
    if (memory.pending.kind == Kind::confirm && SpokenConsent::isAffirmative(words)) {
        const PendingQuestion asked = std::exchange(memory.pending, {});
        return {ToolRequests{around}.confirmed(asked.tool, asked.arguments), std::move(memory)};
    }
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
    if (const auto id = ToolResultRules::reminderIn(result); call.name == "set_reminder" && !id.empty())
        memory.reminder = ToolResultRules::endsReminder(result) ? "" : id;
    if (call.name == "set_reminder")
        memory.pending = ToolResultRules::questionIn(call, result, reply);
    if (memory.pending.kind == Kind::none)
        memory.pending = ToolResultRules::questionOf(call, result, reply, memory.found);
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
