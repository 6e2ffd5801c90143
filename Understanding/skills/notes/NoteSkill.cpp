// SPDX-License-Identifier: MIT
#include "Understanding/skills/notes/NoteSkill.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/notes/NoteCalls.h"
#include "Understanding/skills/notes/NoteCues.h"
#include "Understanding/skills/notes/NoteRemoving.h"
#include "Understanding/skills/notes/NoteRules.h"
#include "Understanding/skills/notes/NoteWishes.h"
#include "Understanding/skills/notes/NotebookQuestion.h"
#include "Understanding/words/CommonCues.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <utility>

namespace quorvell {

namespace {

using Found = std::optional<Request>;
using Purpose = RequestMemory::SearchPurpose;

constexpr CueWeights weights[] = {
    {CommonCues::pronoun, {{{"readNote", 1}}}},
    {NoteCues::keep, {{{"keepNote", 5}}}},
    {CommonCues::make, {{{"keepNote", 2}}}},
    {CommonCues::enter, {{{"keepNote", 2}}}},
    {CommonCues::find, {{{"findNote", 5}}}},
    {CommonCues::read, {{{"readNote", 5}, {"findNote", 1}}}},
    {CommonCues::open, {{{"readNote", 3}, {"openNotebook", 3}}}},
    {CommonCues::show, {{{"findNote", 2}, {"openNotebook", 3}}}},
    {CommonCues::cancel, {{{"deleteNote", 5}, {"findNote", -5}}}},
    {CommonCues::what, {{{"readNote", 1}}}},
    {NoteCues::where, {{{"findNote", 4}}}},
    {CommonCues::have, {{{"findNote", 2}}}},
    {CommonCues::any, {{{"findNote", 2}}}},
    {NoteCues::wrote, {{{"readNote", 4}, {"findNote", 4}}}},
    {NoteCues::say, {{{"readNote", 4}}}},
    {CommonCues::topic, {{{"findNote", 2}, {"readNote", 2}}}},
    {NoteCues::note,
        {{{"keepNote", 2}, {"findNote", 4}, {"readNote", 2}, {"deleteNote", 2}, {"cancelEvent", -5}, {"moveEvent", -5},
            {"addEvent", -4}, {"finishReminder", -3}}}},
    {NoteCues::notes,
        {{{"keepNote", 2}, {"findNote", 4}, {"readNote", 1}, {"deleteNote", 2}, {"cancelEvent", -5}, {"moveEvent", -5},
            {"addEvent", -4}, {"listEvents", -4}}}},
    {NoteCues::newest, {{{"readNote", 4}, {"deleteNote", 2}, {"cancelEvent", -5}}}},
    {NoteCues::notebook,
        {{{"openNotebook", 3}, {"findNote", 3}, {"keepNote", 2}, {"listEvents", -4}, {"addEvent", -4}}}},
    {CommonCues::foreign, {{{"deleteNote", -6}}}},
};

Request requestFor(NoteIntent intent)
{
    return {.answer = [intent = std::move(intent)](RequestMemory memory, const RuleSurroundings& around) {
        return NoteRules::answer(intent, std::move(memory), around);
    }};
}

/// One of the things that were told; the words may as well say which of those that were asked about.
Request readingFound(const NoteIntent& intent)
{
    return {.answer = [place = intent.place](RequestMemory memory,
                          const RuleSurroundings&) { return NoteRules::askWhich(place, std::move(memory)); },
        .mayAnswer = [](const PendingQuestion&, const RuleSurroundings&) { return true; },
        .pointsIntoList = true,
        .place = intent.place};
}

Found searching(const RequestReading& reading, Purpose purpose)
{
    auto intent = NoteIntent::searching(reading, purpose);
    if (!intent)
        return std::nullopt;
    return intent->kind == NoteIntent::Kind::readFound ? readingFound(*intent) : requestFor(*std::move(intent));
}

Found keep(const RequestReading& reading, const RuleSurroundings&)
{
    // "I would like to write her a card" asks for no note.
    static const Pattern letter("^write (?:to \\w+|\\w+(?: and \\w+)? (?:an?|the|another|my|our)(?: \\w+){0,2} "
                                "(?:card|postcard|letter|mail|e-?mail|message|text|invitation|invite|thank you))\\b",
        Pattern::caseless);
    if (letter.find(reading.words))
        return std::nullopt;
    // "Keep a secret", "type hello": nothing to be written down unless a note is spoken of.
    static const Pattern otherVerb("^(?:keep|save|store|record|log|file|type)\\b", Pattern::caseless);
    static const Pattern bareThing("^(?:an?|the|my|your|some|all) [\\w'’-]+(?: [\\w'’-]+)?$", Pattern::caseless);
    static const Pattern typing("^type\\b(?!.*\\bnotes?\\b)", Pattern::caseless);
    const bool isOfNote =
        reading.has(NoteCues::note) || reading.has(NoteCues::notes) || reading.has(NoteCues::notebook);
    if (typing.find(reading.words) || (!isOfNote && otherVerb.find(reading.words) && bareThing.find(reading.content)))
        return std::nullopt;
    return requestFor(NoteIntent::keeping(reading.content));
}

Found read(const RequestReading& reading, const RuleSurroundings&)
{
    return searching(reading, Purpose::read);
}

Found find(const RequestReading& reading, const RuleSurroundings&)
{
    return searching(reading, Purpose::tell);
}

/// Opens the notebook itself only when nothing in it is asked for.
Found open(const RequestReading& reading, const RuleSurroundings& around)
{
    if (!reading.has(NoteCues::notebook) || !reading.content.empty() || !around.offers("open_notebook"))
        return std::nullopt;
    return Request{.answer = [](RequestMemory memory, const RuleSurroundings& surroundings) {
        return RuleStep{NoteCalls{surroundings}.open(), std::move(memory)};
    }};
}

Found remove(const RequestReading& reading, const RuleSurroundings&)
{
    return NoteRemoving::read(reading);
}

constexpr RequestKind kinds[] = {
    {"keepNote", {}, keep},
    {"readNote", {}, read},
    {"findNote", {}, find},
    {"openNotebook", {}, open},
    {"deleteNote", {}, remove},
};

constexpr TrailingWish trailingWishes[] = {
    {"(?:make|take|keep) a (?:little |quick )?note(?: of (?:that|this|it))?|note (?:that|this|it)(?: down)?"
     "|(?:write|jot|put|take|get|scribble) (?:(?:that|this|it) down|down (?:that|this|it))"
     "|(?:put|add|write|save|keep) (?:that|this|it) (?:in|into|to) (?:my|the) (?:notes|notebook)"
     "|(?:save|note|store) (?:that|this|it)|for (?:the|my|our) (?:records?|files)",
        "note that "},
};

constexpr std::string_view tools[] = {"keep_note", "find_in_notebook", "read_note", "open_notebook"};

std::string ability(const RuleSurroundings& around)
{
    const bool keeps = around.offers("keep_note");
    const bool finds = around.offers("find_in_notebook");
    const bool reads = finds && around.offers("read_note");
    if (keeps)
        return reads ? "save, find and read your notes" : finds ? "save and find your notes" : "save notes";
    return !finds ? "" : reads ? "find and read your notes" : "find your notes";
}

Request asking(NotebookQuestion question)
{
    return {.answer = [question = std::move(question)](RequestMemory memory, const RuleSurroundings& around) {
        return NoteRules::ask(question, std::move(memory), around);
    }};
}

Found readPlain(const std::string& core, const RuleSurroundings& around)
{
    if (const auto choice = NoteIntent::readChoice(core))
        return readingFound(*choice);
    if (!around.offers("find_in_notebook"))
        return std::nullopt;
    static const Pattern newest(
        "^(?:what (?:did|have) (?:i|we) (?:note|write|wrote|jot|noted|written)(?: down)? "
        "(?:last|most recently|just now)|what (?:was|is) my (?:last|latest|newest|most recent) note"
        "|(?:read|show|open|tell)(?: me)? (?:the|my) (?:last|latest|newest|most recent) note)[?. ]*$",
        Pattern::caseless);
    if (newest.find(core))
        return requestFor({.kind = NoteIntent::Kind::search, .purpose = Purpose::readNewest});
    if (auto wish = NoteWishes::read(core, around))
        return wish;
    if (NotebookQuestion::asksAllNotes(core))
        return requestFor({.kind = NoteIntent::Kind::search, .purpose = Purpose::listNotes});
    if (NotebookQuestion::asksAllFacts(core)) {
        return Request{.answer = [](RequestMemory memory, const RuleSurroundings& surroundings) {
            return RuleStep{NoteCalls{surroundings}.facts(), std::move(memory)};
        }};
    }
    auto question = NotebookQuestion::readOwn(core);
    return question ? Found(asking(*std::move(question))) : std::nullopt;
}

/// What nobody else can look up: the notebook may hold it, and is looked through once.
Found readQuestion(const RequestReading& reading, const RuleSurroundings& around)
{
    if (reading.has(CommonCues::foreign) || !around.offers("find_in_notebook"))
        return std::nullopt;
    auto question = NotebookQuestion::readAny(reading.words);
    return question ? Found(asking(*std::move(question))) : std::nullopt;
}

/// Of a note that was kept without a way back.
Skill::Step undo(RequestMemory memory, const RuleSurroundings& around)
{
    return NoteRemoving::removeFound(std::move(memory), around);
}

Skill::Step addAnother(const std::string& words, RequestMemory memory, const RuleSurroundings& around)
{
    return NoteRules::keep(words, std::move(memory), around);
}

RuleStep changeListed(const Wish& wish, const FoundThing& note, RequestMemory memory, const RuleSurroundings& around)
{
    if (wish.kind != Wish::Kind::cancel)
        return ToolResults::say("A note has no time that could be changed.", std::move(memory));
    return NoteRemoving::ask(note, std::move(memory), around);
}

RuleStep pointAt(const FoundThing& note, RequestMemory memory, const RuleSurroundings& around)
{
    return {NoteCalls{around}.read(note.id), std::move(memory)};
}

/// Lists tell their own changes.
std::string whatWasDone(const ToolRequest& call, const ToolResult& result)
{
    const bool isDeleted = result.status() == ToolStatus::deleted;
    if (call.name != "keep_note" || (!isDeleted && result.status() != ToolStatus::kept))
        return {};
    const std::string title = result.string("title").value_or("");
    if (isDeleted)
        return title.empty() ? "deleted a note" : "deleted the note called " + title;
    return title.empty() ? "wrote a note" : "wrote a note called " + title;
}

std::string questionBefore(const ToolRequest& call)
{
    if (call.name != "keep_note")
        return "";
    const auto arguments = parseJson(call.arguments);
    return arguments && memberOf(*arguments, "delete") ? "Should I delete that note?" : "Should I write that down?";
}

} // namespace

constinit const Skill NoteSkill::row{
    .name = NoteCalls::skill,
    .tools = tools,
    .cues = NoteCues::rows,
    .weights = weights,
    .kinds = kinds,
    .trailingWishes = trailingWishes,
    .ability = ability,
    .readPlain = readPlain,
    .readQuestion = readQuestion,
    .questionBefore = questionBefore,
    .takeResult = NoteRules::takeResult,
    .whatWasDone = whatWasDone,
    .undo = undo,
    .addAnother = addAnother,
    .changeListed = changeListed,
    .pointAt = pointAt,
};

} // namespace quorvell
