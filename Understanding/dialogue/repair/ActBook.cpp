// SPDX-License-Identifier: MIT
#include "Understanding/dialogue/repair/ActBook.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Json.h"
#include "QuorvellCore/text/TextMatch.h"
#include "Understanding/dialogue/ToolCalls.h"
#include "Understanding/dialogue/ToolResults.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <utility>

namespace quorvell {

namespace {

constexpr std::size_t longestWhat = 200; ///< User-perceived characters of what is told of one act.
constexpr std::size_t longestToken = 64; ///< Bytes.
constexpr std::size_t mostInWords = 5;
constexpr const char* noWayBack = "I know no way back from it.";

/// "I have made a note of that." is "made a note of that" behind "I".
std::string fromReply(const RuleStep& step)
{
    const auto* reply = std::get_if<std::string>(&step.answer);
    std::string_view said = reply ? std::string_view(*reply) : std::string_view();
    said = said.substr(0, said.find('.'));
    constexpr std::string_view perfect = "I have ";
    if (said.starts_with(perfect))
        return std::string(said.substr(perfect.size()));
    return said.empty() ? "changed something" : "said: " + std::string(said);
}

std::string joined(const std::vector<std::string>& parts)
{
    std::string text;
    for (std::size_t index = 0; index < parts.size() && index < mostInWords; ++index) {
        const bool isLast = index + 1 == std::min(parts.size(), mostInWords);
        text += (index == 0 ? "" : isLast && parts.size() <= mostInWords ? ", and " : ", ") + parts[index];
    }
    if (parts.size() > mostInWords)
        text += ", and " + std::to_string(parts.size() - mostInWords) + " more";
    return text;
}

/// Words of a wish to take something back that name nothing.
bool isFiller(std::string_view word)
{
    constexpr auto fillers = std::to_array<std::string_view>(
        {"the", "a", "an", "my", "our", "your", "that", "this", "adding", "setting", "making", "putting", "deleting",
            "removing", "moving", "changing", "ticking", "cancelling", "canceling", "one", "of", "to", "for", "in",
            "on", "from", "with", "about", "and", "change", "thing", "act", "you", "did", "just", "i", "it", "part",
            "bit", "entry", "please", "only", "creation", "addition", "deletion", "removal", "move"});
    return std::ranges::find(fillers, word) != fillers.end();
}

bool holdsAll(const std::string& what, const std::string& words)
{
    const std::string text = " " + TextMatch::normalized(what) + " ";
    const std::string wanted = TextMatch::normalized(words);
    bool names = false;
    for (std::size_t start = 0; start < wanted.size();) {
        const std::size_t end = std::min(wanted.find(' ', start), wanted.size());
        const std::string word = wanted.substr(start, end - start);
        start = end + 1;
        if (isFiller(word))
            continue;
        names = true;
        if (text.find(" " + word) == std::string::npos)
            return false;
    }
    return names;
}

std::string told(const TakingBack& plan)
{
    std::string text = plan.undone.empty() ? std::string() : "Undone: " + joined(plan.undone) + ".";
    for (const std::string& sentence : plan.failed)
        text += (text.empty() ? "" : " ") + sentence;
    return text.empty() ? "There is nothing to take back." : text;
}

std::string cannotBeTakenBack(const DoneAct& act)
{
    return "I " + act.what + ", and that cannot be taken back: " + (act.whyNot.empty() ? noWayBack : act.whyNot);
}

void forget(const DoneAct& act, std::vector<DoneAct>& acts)
{
    const auto place = std::ranges::find(acts, act);
    if (place != acts.end())
        acts.erase(place);
}

/// All is taken back, or cannot be: it is told, or what was wished instead is done.
RuleStep finish(RequestMemory memory)
{
    TakingBack plan = std::exchange(memory.takingBack, {});
    if (plan.failed.empty() && plan.call)
        return {*std::move(plan.call), std::move(memory)};
    if (plan.failed.empty() && !plan.words.empty()) {
        memory.takingBack.words = std::move(plan.words);
        return {std::string(), std::move(memory)};
    }
    return ToolResults::say(told(plan), std::move(memory));
}

RuleStep goOn(RequestMemory memory, const RuleSurroundings& around)
{
    auto& left = memory.takingBack.left;
    while (!left.empty()) {
        const DoneAct& act = left.front();
        if (act.undo && around.offers(act.undo->name))
            return {*act.undo, std::move(memory)};
        memory.takingBack.failed.push_back(cannotBeTakenBack(act));
        left.erase(left.begin());
    }
    return finish(std::move(memory));
}

/// "It" is again what it was.
void restore(const DoneAct& act, RequestMemory& memory)
{
    memory.topic = act.topic;
    memory.reminder = act.reminder;
    memory.event = act.event;
    memory.asked = RequestMemory::CalendarQuestion::none;
}

} // namespace

void ActBook::record(const ToolRequest& call, const ToolResult& result, std::string_view skill, std::string what,
    const RequestMemory& before, RuleStep& step)
{
    const std::string token = result.string("undo").value_or("");
    const std::string whyNot = result.string("cannot_undo").value_or("");
    const bool hasToken = !token.empty() && token.size() <= longestToken;
    if (result.isFailure() || (!hasToken && whyNot.empty()))
        return;
    if (what.empty())
        what = fromReply(step);
    auto& acts = step.memory.acts;
    if (acts.size() >= RequestMemory::mostActs)
        acts.erase(acts.begin());
    acts.push_back({.skill = skill,
        .what = firstCharacters(what, longestWhat),
        .call = call,
        .undo = hasToken ? std::optional(ToolRequest{call.name, dumpJson(Json{{"undo", token}})}) : std::nullopt,
        .whyNot = firstCharacters(whyNot, longestWhat),
        .turn = before.turn,
        .words = before.words,
        .topic = before.topic,
        .reminder = before.reminder,
        .event = before.event});
    step.memory.takenBack.clear();
}

std::vector<DoneAct> ActBook::newest(const RequestMemory& memory, std::size_t count)
{
    std::vector<DoneAct> acts;
    std::size_t requests = 0;
    for (auto act = memory.acts.rbegin(); act != memory.acts.rend(); ++act) {
        requests += acts.empty() || acts.back().turn != act->turn ? 1U : 0U;
        if (requests > count)
            break;
        acts.push_back(*act);
    }
    return acts;
}

std::vector<DoneAct> ActBook::beforeLast(const RequestMemory& memory)
{
    const auto last = newest(memory, 1);
    auto both = newest(memory, 2);
    both.erase(both.begin(), both.begin() + static_cast<std::ptrdiff_t>(last.size()));
    return both;
}

std::vector<std::vector<DoneAct>> ActBook::named(const RequestMemory& memory, const std::string& words)
{
    std::vector<std::vector<DoneAct>> fitting;
    for (auto act = memory.acts.rbegin(); act != memory.acts.rend(); ++act) {
        if (holdsAll(act->what, words))
            fitting.push_back({*act});
    }
    return fitting;
}

bool ActBook::wasJustDone(const RequestMemory& memory)
{
    return !memory.acts.empty() && memory.acts.back().turn + 1 == memory.turn;
}

bool ActBook::hasJustFailed(const RequestMemory& memory)
{
    return memory.failedAt != 0 && memory.failedAt + 1 == memory.turn && !wasJustDone(memory);
}

RuleStep ActBook::takeBack(TakingBack plan, RequestMemory memory, const RuleSurroundings& around)
{
    memory.pending = {};
    memory.takingBack = std::move(plan);
    return goOn(std::move(memory), around);
}

bool ActBook::isTakingBack(const ToolRequest& call, const RequestMemory& memory)
{
    return !memory.takingBack.left.empty() && memory.takingBack.left.front().undo == call;
}

RuleStep ActBook::takeResult(const ToolResult& result, RequestMemory memory, const RuleSurroundings& around)
{
    TakingBack& plan = memory.takingBack;
    DoneAct act = std::move(plan.left.front());
    plan.left.erase(plan.left.begin());
    if (result.status() == ToolStatus::undone) {
        plan.undone.push_back(act.what);
        forget(act, memory.acts);
        restore(act, memory);
        if (memory.takenBack.size() >= RequestMemory::mostActs)
            memory.takenBack.erase(memory.takenBack.begin());
        memory.takenBack.push_back(std::move(act));
        memory.tookBackAt = memory.turn;
        return goOn(std::move(memory), around);
    }
    const auto failure = ToolResults::failure(result);
    plan.failed.push_back("I could not take back that I " + act.what + ": "
        + (failure ? *failure : std::string("its tool did not say that it did.")));
    // Its way back is used up. It stays on top, so that a second "undo" does not go further back unawares.
    if (const auto place = std::ranges::find(memory.acts, act); place != memory.acts.end()) {
        place->undo = std::nullopt;
        place->whyNot = failure.value_or("it did not work.");
    }
    plan.call.reset();
    plan.words.clear();
    return goOn(std::move(memory), around);
}

std::string ActBook::inWords(const std::vector<DoneAct>& acts)
{
    std::vector<std::string> parts;
    parts.reserve(acts.size());
    for (const DoneAct& act : acts)
        parts.push_back(act.what);
    return joined(parts);
}

} // namespace quorvell
