// SPDX-License-Identifier: MIT
#include "Understanding/skills/notes/NoteRules.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/PlainReplies.h"
#include "Understanding/dialogue/Pointing.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/calendar/AgendaRules.h"
#include "Understanding/skills/calendar/EventAsking.h"
#include "Understanding/skills/calendar/finding/EventLookup.h"
#include "Understanding/skills/notes/AnswerReply.h"
#include "Understanding/skills/notes/NoteCalls.h"
#include "Understanding/skills/notes/NoteRemoving.h"
#include "Understanding/skills/notes/NoteReply.h"
#include "Understanding/skills/notes/NotebookQuestion.h"
#include "Understanding/words/RequestText.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <utility>

namespace quorvell {

namespace {

using Purpose = RequestMemory::SearchPurpose;
using Step = std::optional<RuleStep>;

constexpr int listLength = 50; ///< As many as are told at once: reminders and lists are among them.
constexpr const char* whichQuestion = "Which one should I read?";

RuleStep search(const NoteIntent& intent, RequestMemory memory, const RuleSurroundings& around)
{
    if (!intent.question.empty())
        return NoteRules::ask({.words = intent.question, .topic = intent.text}, std::move(memory), around);
    memory.purpose = intent.purpose;
    const int limit = intent.purpose == Purpose::listNotes ? listLength
        : intent.purpose == Purpose::readNewest            ? listLength
                                                           : 0;
    return {NoteCalls{around}.find(intent.text, limit), std::move(memory)};
}

Step takeText(const std::string& core, const PendingQuestion&, RequestMemory memory, const RuleSurroundings& around)
{
    return NoteRules::keep(core, std::move(memory), around);
}

Step takeTopic(const std::string& core, const PendingQuestion&, RequestMemory memory, const RuleSurroundings& around)
{
    memory.purpose = Purpose::read;
    return RuleStep{NoteCalls{around}.find(core, 0), std::move(memory)};
}

Step takeChoice(const std::string& core, const PendingQuestion&, RequestMemory memory, const RuleSurroundings& around)
{
    const auto note = Pointing::at(memory.found, core, around);
    return note ? Step(RuleStep{NoteCalls{around}.read(note->id), std::move(memory)}) : std::nullopt;
}

/// The note to read at once, when that is what the search was for.
std::optional<std::string> noteToRead(const RequestMemory& memory)
{
    const bool isOne = memory.purpose == Purpose::read && memory.found.size() == 1;
    const bool isNewest = memory.purpose == Purpose::readNewest && !memory.found.empty();
    return isOne || isNewest ? std::optional(memory.found.front().id) : std::nullopt;
}

/// A note that comes near is offered: it may hold the answer in other words.
RuleStep offering(const FoundThing& note, RequestMemory memory, const RuleSurroundings& around)
{
    const auto call = NoteCalls{around}.read(note.id);
    const auto* reading = std::get_if<ToolRequest>(&call);
    if (!reading)
        return ToolResults::say("I find nothing that says that in your notebook.", std::move(memory));
    return RuleStep::asking({.kind = &ToolResults::confirmation,
                                .question = "I find nothing that says that, but there is a note called "
                                    + trimmed(note.title, ".") + ". Should I read it?",
                                .tool = reading->name,
                                .arguments = reading->arguments},
        std::move(memory));
}

/// What is in no note may stand in the calendar, or be known to a bigger model.
RuleStep nothingSaid(
    const std::string& asked, const std::string& topic, RequestMemory memory, const RuleSurroundings& around)
{
    // When somebody was born whom they do not call theirs is no matter of their calendar.
    static const Pattern born("^(?!.*\\b(?:my|our|i|we|me)\\b).*\\bborn\\b", Pattern::caseless);
    const std::string day = born.find(asked) ? std::string() : NotebookQuestion::dayOf(asked);
    if (!day.empty() && around.offers("whats_on")) {
        constexpr int daysAhead = 366;
        SpokenDays year = SpokenDays::ahead(around);
        year.to =
            DateParts::fromDay(around.calendar.addingDays(around.now, std::chrono::days(daysAhead)), around.calendar);
        year.words = "in the next year";
        return AgendaRules::answer(
            {.kind = AgendaIntent::Kind::next, .days = std::move(year), .title = day}, std::move(memory), around);
    }
    const bool isOfTheirs = NotebookQuestion::isOfTheirs(asked);
    const std::string nothing = isOfTheirs ? "I find nothing about " + topic + " in your notebook."
                                           : "I don't know that, and looking things up needs an online model.";
    if (auto search = EventAsking::ofUnknown(asked, around)) {
        search->otherwise = nothing;
        search->isForModel = !isOfTheirs;
        return EventLookup::begin(*std::move(search), std::move(memory), around);
    }
    RuleStep step = ToolResults::say(nothing, std::move(memory));
    step.isNotUnderstood = !isOfTheirs;
    return step;
}

RuleStep takeAnswer(const Json& arguments, const Json& result, RequestMemory memory, const RuleSurroundings& around)
{
    const std::string said = AnswerReply::sentences(result);
    memory.found = ToolResults::things(said.empty() ? NoteReply::onlyNotes(result) : result,
        said.empty() ? "notes" : "sentences", {.skill = NoteCalls::skill, .start = "date"});
    if (!said.empty())
        return ToolResults::say(said, std::move(memory));
    if (!memory.found.empty()) {
        const FoundThing nearest = memory.found.front();
        return offering(nearest, std::move(memory), around);
    }
    return nothingSaid(readString(arguments, "question").value_or(""), readString(arguments, "query").value_or("that"),
        std::move(memory), around);
}

RuleStep takeFound(const ToolRequest& call, const Json& result, RequestMemory memory, const RuleSurroundings& around)
{
    const auto arguments = parseJson(call.arguments);
    if (arguments && readString(*arguments, "question"))
        return takeAnswer(*arguments, result, std::move(memory), around);
    if (arguments && readString(*arguments, "kind") == "about_me")
        return ToolResults::say(AnswerReply::facts(result), std::move(memory));
    const std::string query = arguments ? readString(*arguments, "query").value_or("") : "";
    // Who asks for their notes does not mean their reminders and lists.
    const bool isOfNotes = query.empty() || memory.purpose == Purpose::remove;
    const Json notes = isOfNotes ? NoteReply::onlyNotes(result) : result;
    std::string reply = NoteReply::found(notes, query, memory.purpose);
    memory.found = ToolResults::things(notes, "notes", {.skill = NoteCalls::skill, .start = "date"});
    const bool isOfNewest = query.empty() && memory.purpose == Purpose::remove && arguments && !memory.found.empty();
    if (isOfNewest)
        memory.found.resize(1);
    if (memory.purpose == Purpose::remove)
        return NoteRemoving::takeFound(query, std::move(memory), around);
    const auto id = noteToRead(memory);
    if (id && around.offers("read_note"))
        return {NoteCalls{around}.read(*id), std::move(memory)};
    if (memory.found.size() > 1)
        memory.pending = {.kind = &NoteRules::whichOne, .question = whichQuestion};
    return ToolResults::say(std::move(reply), std::move(memory));
}

} // namespace

const QuestionKind NoteRules::whatToWrite{takeText};
const QuestionKind NoteRules::whatAbout{takeTopic};
const QuestionKind NoteRules::whichOne{takeChoice};

RuleStep NoteRules::keep(const std::string& words, RequestMemory memory, const RuleSurroundings& around)
{
    return {NoteCalls{around}.keep(NoteIntent::titleFor(words), RequestText::written(words)), std::move(memory)};
}

RuleStep NoteRules::answer(const NoteIntent& intent, RequestMemory memory, const RuleSurroundings& around)
{
    if (intent.kind == NoteIntent::Kind::search)
        return search(intent, std::move(memory), around);
    if (intent.text.empty() && intent.title.empty())
        return RuleStep::asking(
            {.kind = &whatToWrite, .question = "What do you want to write down?"}, std::move(memory));
    const std::string title = intent.title.empty() ? NoteIntent::titleFor(intent.text) : intent.title;
    return {NoteCalls{around}.keep(title, intent.text), std::move(memory)};
}

RuleStep NoteRules::ask(const NotebookQuestion& question, RequestMemory memory, const RuleSurroundings& around)
{
    memory.purpose = Purpose::tell;
    return {NoteCalls{around}.ask(question.words, question.topic), std::move(memory)};
}

RuleStep NoteRules::askWhich(const std::optional<ListPlace>& place, RequestMemory memory)
{
    if (memory.found.empty())
        return RuleStep::asking({.kind = &whatAbout, .question = "What are you looking for?"}, std::move(memory));
    if (memory.found.front().skill == NoteCalls::skill)
        return RuleStep::asking({.kind = &whichOne, .question = whichQuestion}, std::move(memory));
    return {std::string(place ? PlainReplies::notThatMany : PlainReplies::whichOne), std::move(memory)};
}

RuleStep NoteRules::takeResult(
    const ToolRequest& call, const ToolResult& result, RequestMemory memory, const RuleSurroundings& around)
{
    if (auto failure = ToolResults::failure(result))
        return ToolResults::say(*std::move(failure), std::move(memory));
    if (call.name == "find_in_notebook")
        return takeFound(call, result.json(), std::move(memory), around);
    if (call.name == "read_note")
        return ToolResults::say(NoteReply::read(result.json()), std::move(memory));
    if (call.name == "open_notebook")
        return ToolResults::say("Here is your notebook.", std::move(memory));
    if (result.status() == ToolStatus::deleted)
        return NoteRemoving::takeDeleted(result, std::move(memory));
    memory.talkOf(NoteCalls::skill);
    if (const auto id = result.string("id"))
        memory.found = {{.id = *id, .title = result.string("title").value_or(""), .skill = NoteCalls::skill}};
    return ToolResults::say(NoteReply::kept(result.json()), std::move(memory));
}

} // namespace quorvell
