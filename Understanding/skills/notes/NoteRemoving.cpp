// SPDX-License-Identifier: MIT
#include "Understanding/skills/notes/NoteRemoving.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/Pointing.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/notes/NoteCalls.h"
#include "Understanding/skills/notes/NoteCues.h"
#include "Understanding/skills/notes/NoteIntent.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

using Purpose = RequestMemory::SearchPurpose;

constexpr int newestAmong = 50; ///< Reminders and lists are among what is found.
constexpr std::size_t mostAskedAbout = 3; ///< Titles in one question.

std::string titled(const FoundThing& note)
{
    const std::string title = trimmed(note.title, ".!?");
    return title.empty() ? "that note" : "the note called " + title;
}

std::optional<RuleStep> takeDoomed(
    const std::string& core, const PendingQuestion&, RequestMemory memory, const RuleSurroundings& around)
{
    const auto note = Pointing::at(memory.found, core, around);
    return note ? std::optional(NoteRemoving::ask(*note, std::move(memory), around)) : std::nullopt;
}

std::optional<RuleStep> takeDoomedTopic(
    const std::string& core, const PendingQuestion&, RequestMemory memory, const RuleSurroundings& around)
{
    memory.purpose = Purpose::remove;
    return RuleStep{NoteCalls{around}.find(core, 0), std::move(memory)};
}

const QuestionKind whichGoes{takeDoomed};
const QuestionKind whatGoes{takeDoomedTopic};

RuleStep askWhichGoes(RequestMemory memory)
{
    std::string question;
    for (std::size_t index = 0; index < std::min(memory.found.size(), mostAskedAbout); ++index)
        question += (index == 0 ? "" : ", or ") + titled(memory.found[index]);
    question = "Which one should I delete: " + question + "?";
    return RuleStep::asking({.kind = &whichGoes, .question = std::move(question)}, std::move(memory));
}

} // namespace

std::optional<Request> NoteRemoving::read(const RequestReading& reading)
{
    const bool isNewest = reading.has(NoteCues::newest);
    if (!isNewest && !reading.has(NoteCues::note) && !reading.has(NoteCues::notes))
        return std::nullopt;
    const auto intent = NoteIntent::searching(reading, Purpose::remove);
    static const Pattern idle("^(?:away|out|again|now|completely|entirely|for good|permanently)$", Pattern::caseless);
    const bool isNamed =
        intent && intent->kind == NoteIntent::Kind::search && !intent->text.empty() && !idle.find(intent->text);
    return Request{.answer = [topic = isNamed ? intent->text : std::string(), isNewest,
                                 isOfAll = !isNewest && !isNamed && reading.has(NoteCues::notes)](
                                 RequestMemory memory, const RuleSurroundings& around) {
        if (isOfAll)
            return ToolResults::say(
                "I delete notes one at a time: tell me what the one is about that should go.", std::move(memory));
        if (!isNewest && topic.empty())
            return removeFound(std::move(memory), around);
        memory.purpose = Purpose::remove;
        return RuleStep{NoteCalls{around}.find(isNewest ? "" : topic, isNewest ? newestAmong : 0), std::move(memory)};
    }};
}

RuleStep NoteRemoving::removeFound(RequestMemory memory, const RuleSurroundings& around)
{
    std::erase_if(memory.found, [](const FoundThing& thing) { return thing.skill != NoteCalls::skill; });
    if (memory.found.empty())
        return RuleStep::asking(
            {.kind = &whatGoes, .question = "What is the note about that should go?"}, std::move(memory));
    if (memory.found.size() > 1)
        return askWhichGoes(std::move(memory));
    const FoundThing note = memory.found.front();
    return ask(note, std::move(memory), around);
}

RuleStep NoteRemoving::ask(const FoundThing& note, RequestMemory memory, const RuleSurroundings& around)
{
    const auto call = NoteCalls{around}.remove(note.id);
    const auto* removing = std::get_if<ToolRequest>(&call);
    if (!removing)
        return {call, std::move(memory)};
    memory.found = {note};
    return RuleStep::asking({.kind = &ToolResults::confirmation,
                                .question = "Should I delete " + titled(note) + "?",
                                .tool = removing->name,
                                .arguments = removing->arguments},
        std::move(memory));
}

RuleStep NoteRemoving::takeFound(const std::string& query, RequestMemory memory, const RuleSurroundings& around)
{
    memory.purpose = Purpose::tell;
    if (!memory.found.empty())
        return removeFound(std::move(memory), around);
    return ToolResults::say(
        query.empty() ? "There are no notes in your notebook." : "I found no note about " + query + ".",
        std::move(memory));
}

RuleStep NoteRemoving::takeDeleted(const ToolResult& result, RequestMemory memory)
{
    const FoundThing note{.title = result.string("title").value_or("")};
    memory.talkOf(NoteCalls::skill);
    memory.found.clear();
    return ToolResults::say(
        "I deleted " + titled(note) + ". Say \"undo that\" if you want it back.", std::move(memory));
}

} // namespace quorvell
