// SPDX-License-Identifier: MIT
#include "Understanding/skills/notes/NoteRules.h"

#include "Understanding/dialogue/PlainReplies.h"
#include "Understanding/dialogue/Pointing.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/notes/NoteCalls.h"
#include "Understanding/skills/notes/NoteReply.h"
#include "Understanding/words/RequestText.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <utility>

namespace quorvell {

namespace {

using Purpose = RequestMemory::SearchPurpose;
using Step = std::optional<RuleStep>;

constexpr int listLength = 20;
constexpr const char* whichQuestion = "Which one should I read?";

RuleStep search(const NoteIntent& intent, RequestMemory memory, const RuleSurroundings& around)
{
    memory.purpose = intent.purpose;
    const int limit = intent.purpose == Purpose::listNotes ? listLength : intent.purpose == Purpose::readNewest ? 1 : 0;
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

RuleStep takeFound(const ToolRequest& call, const Json& result, RequestMemory memory, const RuleSurroundings& around)
{
    const auto arguments = parseJson(call.arguments);
    const std::string query = arguments ? readString(*arguments, "query").value_or("") : "";
    std::string reply = NoteReply::found(result, query, memory.purpose);
    memory.found = ToolResults::things(result, "notes", {.skill = NoteCalls::skill, .start = "date"});
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
    if (intent.text.empty())
        return RuleStep::asking(
            {.kind = &whatToWrite, .question = "What do you want to write down?"}, std::move(memory));
    const std::string title = intent.title.empty() ? NoteIntent::titleFor(intent.text) : intent.title;
    return {NoteCalls{around}.keep(title, intent.text), std::move(memory)};
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
    memory.talkOf(NoteCalls::skill);
    return ToolResults::say(NoteReply::kept(result.json()), std::move(memory));
}

} // namespace quorvell
