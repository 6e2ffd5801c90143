// SPDX-License-Identifier: MIT
#include "Understanding/requests/UndoRules.h"

#include "QuorvellCore/text/Json.h"
#include "QuorvellCore/text/Pattern.h"
#include "QuorvellCore/text/TextMatch.h"
#include "Understanding/dialogue/PlainReplies.h"
#include "Understanding/dialogue/QuestionKind.h"
#include "Understanding/dialogue/SmallTalk.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/dialogue/repair/ActBook.h"
#include "Understanding/dialogue/repair/UndoWish.h"
#include "Understanding/requests/SkillTable.h"
#include "Understanding/words/ListPlace.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <utility>
#include <vector>

namespace quorvell {

namespace {

using Step = std::optional<RuleStep>;
using Acts = std::vector<DoneAct>;

constexpr const char* nothingDone = "I have changed nothing in this conversation.";

/// Of what was last set or kept, by its skill's own way.
Step undoOfTopic(const RequestMemory& memory, const RuleSurroundings& around)
{
    const Skill* skill = SkillTable::named(memory.topic);
    return skill && skill->undo ? skill->undo(memory, around) : std::nullopt;
}

bool undoesByItself(const RequestMemory& memory)
{
    const Skill* skill = SkillTable::named(memory.topic);
    return skill && skill->undoesByItself;
}

/// The first one chosen of several that were told, by its place or its words.
Step takeChosen(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings& around)
{
    const auto fitting = ActBook::named(memory, asked.task);
    if (const auto place = ListPlace::read(core)) {
        const auto index = place->among(fitting.size());
        return index ? Step(ActBook::takeBack({.left = fitting[*index]}, std::move(memory), around)) : std::nullopt;
    }
    const auto narrower = ActBook::named(memory, asked.task + " " + core);
    return narrower.size() == 1 ? Step(ActBook::takeBack({.left = narrower.front()}, std::move(memory), around))
                                : std::nullopt;
}

constexpr QuestionKind whichAct{takeChosen};

RuleStep askWhichActs(const std::string& words, const std::vector<Acts>& fitting, RequestMemory memory)
{
    Acts each;
    for (const Acts& acts : fitting)
        each.push_back(acts.front());
    return RuleStep::asking({.kind = &whichAct,
                                .question = "I " + ActBook::inWords(each) + ". Which of them should I take back?",
                                .task = words},
        std::move(memory));
}

/// Asked first: a call that waits for a yes is the first one.
RuleStep askFirst(Acts acts, const std::string& question, RequestMemory memory)
{
    const auto first = std::ranges::find_if(acts, [](const DoneAct& act) { return act.undo.has_value(); });
    if (first == acts.end())
        return ToolResults::say("I " + ActBook::inWords(acts) + ", and " + (acts.size() == 1 ? "that" : "none of it")
                + " can be taken back"
                + (acts.size() == 1 && !acts.front().whyNot.empty() ? ": " + acts.front().whyNot : "."),
            std::move(memory));
    const ToolRequest call = *first->undo;
    std::erase_if(acts, [](const DoneAct& act) { return !act.undo; });
    memory.takingBack = {.left = std::move(acts)};
    return RuleStep::asking(
        {.kind = &ToolResults::confirmation, .question = question, .tool = call.name, .arguments = call.arguments},
        std::move(memory));
}

/// As many as one request may change.
Acts bounded(Acts acts)
{
    constexpr std::size_t mostAtOnce = 20;
    if (acts.size() > mostAtOnce)
        acts.resize(mostAtOnce);
    return acts;
}

RuleStep takeBackEverything(const RequestMemory& memory, const RuleSurroundings& around)
{
    const Acts acts = bounded(ActBook::newest(memory, RequestMemory::mostActs));
    if (acts.size() <= 1)
        return ActBook::takeBack({.left = acts}, memory, around);
    const std::string all = acts.size() < memory.acts.size() ? "the last " : "all ";
    return askFirst(acts,
        "I " + ActBook::inWords(acts) + ". Should I take back " + all + std::to_string(acts.size()) + "?", memory);
}

/// "Undo the rake", where seeds and soil were added with it.
bool isOneOfSeveral(const std::string& words, const DoneAct& act)
{
    const auto arguments = parseJson(act.call.arguments);
    if (!arguments || !arguments->is_object())
        return false;
    const std::string wanted = " " + TextMatch::normalized(words);
    for (const Json& several : *arguments) {
        if (!several.is_array() || several.size() < 2)
            continue;
        for (const Json& one : several) {
            if (one.is_string() && wanted.ends_with(" " + TextMatch::normalized(one.get<std::string>())))
                return true;
        }
    }
    return false;
}

RuleStep takeBackNamed(const std::string& words, const std::vector<Acts>& fitting, const RequestMemory& memory,
    const RuleSurroundings& around)
{
    if (fitting.size() == 1 && isOneOfSeveral(words, fitting.front().front()))
        return askFirst(fitting.front(),
            "I " + ActBook::inWords(fitting.front()) + ", all at once. Should I take all of that back?", memory);
    if (fitting.size() == 1)
        return ActBook::takeBack({.left = fitting.front()}, memory, around);
    return askWhichActs(words, fitting, memory);
}

RuleStep nothingLikeThat(const RequestMemory& memory)
{
    if (memory.acts.empty())
        return ToolResults::say(nothingDone, memory);
    return ToolResults::say("I have not done anything like that in this conversation. The last thing: I "
            + ActBook::inWords(ActBook::newest(memory, 1)) + ".",
        memory);
}

Step redo(RequestMemory memory, const RuleSurroundings& around)
{
    if (memory.takenBack.empty())
        return ToolResults::say("I have taken nothing back that could be done again.", std::move(memory));
    const DoneAct act = memory.takenBack.back();
    if (!around.offers(act.call.name))
        return std::nullopt;
    memory.takenBack.pop_back();
    memory.words = act.words;
    return RuleStep{act.call, std::move(memory)};
}

RuleStep tellLast(const RequestMemory& memory)
{
    if (!memory.takenBack.empty()) // Until something else is done.
        return ToolResults::say("I took this back: " + memory.takenBack.back().what + ".", memory);
    const Acts acts = ActBook::newest(memory, 1);
    return ToolResults::say(acts.empty() ? nothingDone : "I " + ActBook::inWords(acts) + ".", memory);
}

RuleStep tellAll(const RequestMemory& memory)
{
    Acts acts = memory.acts;
    std::ranges::reverse(acts);
    return ToolResults::say(acts.empty() ? nothingDone
            : acts.size() == 1
            ? "I " + ActBook::inWords(acts) + "."
            : std::to_string(acts.size()) + " things, the newest first: I " + ActBook::inWords(acts) + ".",
        memory);
}

RuleStep tellWhether(const RequestMemory& memory)
{
    if (!ActBook::wasJustDone(memory))
        return ToolResults::say(memory.acts.empty()
                ? "No. " + std::string(nothingDone)
                : "The last thing that I did: I " + ActBook::inWords(ActBook::newest(memory, 1)) + ".",
            memory);
    return ToolResults::say("Yes. I " + ActBook::inWords(ActBook::newest(memory, 1)) + ".", memory);
}

/// With nothing kept that could be taken back.
Step withoutActs(const UndoWish& wish, const RequestMemory& memory, const RuleSurroundings& around)
{
    switch (wish.kind) {
    case UndoWish::Kind::last:
        if (auto step = undoOfTopic(memory, around))
            return step;
        [[fallthrough]];
    case UndoWish::Kind::before:
    case UndoWish::Kind::everything:
        return ToolResults::say(nothingDone, memory);
    case UndoWish::Kind::redo:
        return redo(memory, around);
    case UndoWish::Kind::tellLast:
        return tellLast(memory);
    case UndoWish::Kind::tellAll:
        return tellAll(memory);
    case UndoWish::Kind::tellWhether:
        return tellWhether(memory);
    case UndoWish::Kind::named:
        return std::nullopt;
    }
    return std::nullopt;
}

Step withActs(const UndoWish& wish, const RequestMemory& memory, const RuleSurroundings& around)
{
    switch (wish.kind) {
    case UndoWish::Kind::last:
        if (wish.count == 1 && ActBook::hasJustFailed(memory))
            return UndoRules::offer("Just now I changed nothing. Before that:", memory);
        return ActBook::takeBack({.left = bounded(ActBook::newest(memory, wish.count))}, memory, around);
    case UndoWish::Kind::before:
        return ActBook::takeBack({.left = ActBook::beforeLast(memory)}, memory, around);
    case UndoWish::Kind::everything:
        return takeBackEverything(memory, around);
    case UndoWish::Kind::named:
        return takeBackNamed(wish.words, ActBook::named(memory, wish.words), memory, around);
    case UndoWish::Kind::redo:
    case UndoWish::Kind::tellLast:
    case UndoWish::Kind::tellAll:
    case UndoWish::Kind::tellWhether:
        return withoutActs(wish, memory, around);
    }
    return std::nullopt;
}

RuleStep dropped(RequestMemory memory)
{
    memory.pending = {};
    return ToolResults::say("That is not done, and I leave it so.", std::move(memory));
}

bool onlyTells(UndoWish::Kind kind)
{
    return kind == UndoWish::Kind::tellLast || kind == UndoWish::Kind::tellAll || kind == UndoWish::Kind::tellWhether;
}

} // namespace

std::optional<RuleStep> UndoRules::answer(
    const std::string& said, const RequestMemory& memory, const RuleSurroundings& around)
{
    const bool isAsking = memory.pending.isOpen();
    // "Never mind, cancel that."
    static const Pattern lead("^(?:(?:never ?mind|nvm|no|oh|sorry|actually|wait|hm+)[,.]? )+(?=(?:cancel|scrap|scratch"
                              "|forget|revoke|undo|delete|remove) (?:it|that|this)\\b)",
        Pattern::caseless);
    static const Pattern further(
        "^(?:and )?(?:again|once more|one more(?: time)?|another one)[.!]*$", Pattern::caseless);
    const bool goesOn =
        !isAsking && memory.tookBackAt + 1 == memory.turn && memory.tookBackAt > 0 && further.find(said);
    if (goesOn)
        return memory.acts.empty() ? ToolResults::say("There is nothing more to take back.", memory)
                                   : ActBook::takeBack({.left = ActBook::newest(memory, 1)}, memory, around);
    const std::string core = lead.replaceAll(said, "");
    if (const auto wish = UndoWish::read(core)) {
        if (isAsking && onlyTells(wish->kind))
            return std::nullopt;
        // What is to be taken back is what was just asked about, and is not done.
        const bool isActMeant = memory.pending.isTakenUpAgain && ActBook::wasJustDone(memory);
        if (wish->kind == UndoWish::Kind::last && QuestionKind::isYesOrNo(memory.pending) && !isActMeant)
            return dropped(memory);
        // "Take the library books back" may be anything.
        const bool isNamed = wish->kind == UndoWish::Kind::named;
        if (isNamed && ActBook::named(memory, wish->words).empty())
            return core.starts_with("undo") || core.starts_with("Undo") ? Step(nothingLikeThat(memory)) : std::nullopt;
        if (memory.acts.empty() || (wish->kind == UndoWish::Kind::last && undoesByItself(memory)))
            return isAsking ? std::nullopt : withoutActs(*wish, memory, around);
        return withActs(*wish, memory, around);
    }
    if (isAsking || !SmallTalk::isUndo(core))
        return std::nullopt;
    // "Cancel it", behind a change of an event, is the event.
    static const Pattern thing("^(?:cancel|scrap) it\\b", Pattern::caseless);
    const bool isThing = !memory.acts.empty() && memory.acts.back().call.name == "change_event" && thing.find(core);
    const bool isOfAct =
        !isThing && UndoWish::isOfWhatWasJustDone(core) && ActBook::wasJustDone(memory) && !undoesByItself(memory);
    if (isOfAct)
        return ActBook::takeBack({.left = ActBook::newest(memory, 1)}, memory, around);
    if (auto step = undoOfTopic(memory, around))
        return step;
    constexpr std::size_t recently = 6; // Utterances; "okay" would read as if it was gone.
    const bool isRecent = !memory.acts.empty() && memory.acts.back().turn + recently >= memory.turn;
    return isRecent ? Step(offer("", memory)) : std::nullopt;
}

RuleStep UndoRules::offer(const std::string& lead, RequestMemory memory)
{
    const Acts acts = ActBook::newest(memory, 1);
    const std::string what = ActBook::inWords(acts);
    return askFirst(
        acts, lead + (lead.empty() ? "" : " ") + "I " + what + ". Should I take that back?", std::move(memory));
}

} // namespace quorvell
