// SPDX-License-Identifier: MIT
#include "Understanding/requests/RepairRules.h"

#include "QuorvellCore/text/Json.h"
#include "QuorvellCore/text/Pattern.h"
#include "QuorvellCore/text/TextMatch.h"
#include "Understanding/dialogue/Pointing.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/dialogue/repair/ActBook.h"
#include "Understanding/dialogue/repair/WordRepair.h"
#include "Understanding/dialogue/talk/TalkWords.h"
#include "Understanding/requests/UndoRules.h"
#include "Understanding/time/TimeVocabulary.h"
#include "Understanding/words/RequestWords.h"

#include <nlohmann/json.hpp>

#include <utility>

namespace quorvell {

namespace {

bool isTime(const std::string& words)
{
    const RequestWords parts(words);
    return !words.empty() && TimeVocabulary::mayBeTime(parts, 0, parts.size());
}

/// The question that is open, with the right word in what it is about.
std::optional<RuleStep> inQuestion(const WordRepair& repair, RequestMemory memory)
{
    PendingQuestion& asked = memory.pending;
    const auto task = repair.in(asked.task);
    const auto arguments = asked.arguments.empty() ? std::nullopt : repair.inArguments(asked.arguments);
    if (!task && !arguments)
        return std::nullopt;
    asked.task = task.value_or(asked.task);
    asked.arguments = arguments.value_or(asked.arguments);
    asked.question = repair.in(asked.question).value_or(asked.question);
    memory.request = repair.in(memory.request).value_or(memory.request);
    memory.words = repair.in(memory.words).value_or(memory.words);
    const std::string text = asked.question;
    return RuleStep{text, std::move(memory)};
}

/// What was done last is taken back and done again with the right word.
std::optional<RuleStep> inLastAct(const WordRepair& repair, const RequestMemory& memory, const RuleSurroundings& around)
{
    const auto acts = ActBook::newest(memory, 1);
    if (acts.empty())
        return std::nullopt;
    TakingBack plan{.left = acts};
    if (const auto arguments = acts.size() == 1 ? repair.inArguments(acts.front().call.arguments) : std::nullopt)
        plan.call = ToolRequest{acts.front().call.name, *arguments};
    else if (const auto words = repair.in(acts.front().words))
        plan.words = *words;
    else
        return std::nullopt;
    return ActBook::takeBack(std::move(plan), memory, around);
}

/// "Friday, not thursday", where the last act was on thursday.
bool isTimeOfLastAct(const std::string& wrong, const RequestMemory& memory)
{
    return !wrong.empty() && !memory.acts.empty()
        && TextMatch::normalized(memory.acts.back().what).find(TextMatch::normalized(wrong)) != std::string::npos;
}

RepairRules ofWord(const WordRepair& repair, const RequestMemory& memory, const RuleSurroundings& around)
{
    constexpr std::size_t recently = 3; ///< Utterances.
    if (isTime(repair.right)) {
        // "I said friday": what was said last gets another time, as by "no, friday".
        RequestMemory next = memory;
        if (isTimeOfLastAct(repair.wrong, memory))
            next.talkOf(memory.acts.back().skill); // Not another day for what was asked meanwhile.
        const std::string words =
            repair.wrong.empty() ? "no, " + repair.right : "not " + repair.wrong + ", " + repair.right;
        return {.words = words, .memory = std::move(next)};
    }
    if (memory.pending.isOpen())
        return {.step = inQuestion(repair, memory)};
    const bool isRecent = !memory.acts.empty() && memory.acts.back().turn + recently >= memory.turn;
    const bool isOfAct = isRecent && (memory.acts.back().words == memory.words || memory.words.empty());
    if (auto step = isOfAct ? inLastAct(repair, memory, around) : std::nullopt)
        return {.step = std::move(step)};
    if (const auto words = repair.in(memory.words); words && !isOfAct)
        return {.words = *words, .memory = memory};
    return {};
}

/// The other one of two that were told, where one of them was just dealt with.
RepairRules otherOne(const RequestMemory& memory, const RuleSurroundings& around)
{
    constexpr std::size_t two = 2;
    if (memory.found.size() != two || !memory.call)
        return {};
    const auto arguments = parseJson(memory.call->arguments);
    const std::string id = arguments ? readString(*arguments, "id").value_or("") : "";
    const std::size_t chosen = id == memory.found[0].id ? 0 : id == memory.found[1].id ? 1 : two;
    if (id.empty() || chosen == two)
        return {};
    Json others = *arguments;
    others["id"] = memory.found[1 - chosen].id;
    ToolRequest call{memory.call->name, dumpJson(others)};
    const auto acts = ActBook::newest(memory, 1);
    const bool wasDone = !acts.empty() && acts.front().call == *memory.call && ActBook::wasJustDone(memory);
    if (wasDone)
        return {.step = ActBook::takeBack({.left = acts, .call = std::move(call)}, memory, around)};
    return {.step = RuleStep{std::move(call), memory}};
}

/// "The one with Mia", right behind what was done with one of several.
RepairRules oneNamed(const std::string& words, const RequestMemory& memory)
{
    const auto acts = ActBook::newest(memory, 1);
    if (acts.empty() || !ActBook::wasJustDone(memory))
        return {};
    const auto fitting = ActBook::named(memory, words);
    const bool isThat = !fitting.empty() && fitting.front().front() == acts.front();
    if (isThat)
        return {.step = ToolResults::say("Yes: I " + ActBook::inWords(acts) + ".", memory)};
    return {.step = UndoRules::offer("That was another one.", memory)};
}

/// The open matter from its first words on.
RepairRules fromTheStart(RequestMemory memory)
{
    memory.pending = {};
    memory.batch = {};
    const std::string words = memory.words;
    return {.words = words, .memory = std::move(memory)};
}

} // namespace

RepairRules RepairRules::of(const std::string& core, const RequestMemory& memory, const RuleSurroundings& around)
{
    static const Pattern other(
        "^(?:no[,.]? )?(?:not that one[,.]? )?(?:i (?:mean|meant|said|want|wanted) )?the other(?: one)?(?: please)?$",
        Pattern::caseless);
    if (memory.pending.isOpen() && !memory.words.empty() && talkOf(core) == TalkKind::startAgain)
        return fromTheStart(memory);
    if (!memory.pending.isOpen() && other.find(core))
        return otherOne(memory, around);
    static const Pattern named("^(?:(?:no|sorry)[,.]? )?(?:i (?:mean|meant|want|wanted) )?(?:the|that) one "
                               "((?:with|about|for|of|called|named|in|from) \\S.*)$",
        Pattern::caseless);
    const auto one = memory.pending.isOpen() ? std::nullopt : named.find(core);
    if (one && Pointing::named(memory.found, one->texts[0]).empty())
        return oneNamed(one->texts[0], memory);
    const auto repair = WordRepair::read(core);
    return repair ? ofWord(*repair, memory, around) : RepairRules{};
}

} // namespace quorvell
