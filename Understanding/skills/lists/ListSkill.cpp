// SPDX-License-Identifier: MIT
#include "Understanding/skills/lists/ListSkill.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/dialogue/ToolCalls.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/lists/ListCalls.h"
#include "Understanding/skills/lists/ListFollowUp.h"
#include "Understanding/skills/lists/ListIntent.h"
#include "Understanding/skills/lists/ListReader.h"
#include "Understanding/skills/lists/ListReply.h"
#include "Understanding/skills/lists/ListResults.h"
#include "Understanding/skills/lists/ListRules.h"
#include "Understanding/words/RequestText.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <utility>

namespace quorvell {

namespace {

using FoundRequest = std::optional<Request>;

std::string ability(const RuleSurroundings& around)
{
    return around.offers(ListCalls::tool) ? "keep lists" : "";
}

FoundRequest requestFor(std::optional<ListIntent> intent)
{
    if (!intent)
        return std::nullopt;
    return Request{.answer = [intent = *std::move(intent)](RequestMemory memory, const RuleSurroundings& around) {
        return ListRules::answer(intent, std::move(memory), around);
    }};
}

/// "We need milk" wishes for nothing yet: it is asked.
FoundRequest offering(const ListIntent& intent)
{
    return Request{.answer = [intent](RequestMemory memory, const RuleSurroundings&) {
        const Json arguments{{"list", intent.list}, {"add", intent.items}};
        return RuleStep::asking(
            {.kind = &ToolResults::confirmation,
                .question = "Should I add " + ListReply::joined(intent.items) + " to your " + intent.list + " list?",
                .tool = "keep_note",
                .arguments = dumpJson(arguments)},
            std::move(memory));
    }};
}

FoundRequest readPlain(const std::string& core, const RuleSurroundings& around)
{
    if (!around.offers("keep_note"))
        return std::nullopt;
    if (auto request = requestFor(ListReader::read(core)))
        return request;
    const auto lack = ListFollowUp::readLack(core);
    return lack && !lack->items.empty() ? offering(*lack) : std::nullopt;
}

FoundRequest readStatement(const std::string& core, const RuleSurroundings& around)
{
    auto intent = around.offers("keep_note") ? ListFollowUp::readStatement(core) : std::nullopt;
    const bool isOffer = intent && intent->kind == ListIntent::Kind::add && !intent->items.empty();
    return isOffer ? offering(*intent) : requestFor(std::move(intent));
}

Skill::Step undo(RequestMemory memory, const RuleSurroundings& around)
{
    const std::string token = std::exchange(memory.lists.undo, {});
    if (token.empty())
        return std::nullopt;
    const Json arguments{{"id", memory.lists.list.id}, {"undo", token}}; // the id makes it a matter of lists
    return RuleStep{ToolCalls::call(around, "keep_note", arguments, "keep lists"), std::move(memory)};
}

Skill::Step goOn(const std::string& words, const RequestMemory& memory, const RuleSurroundings& around)
{
    static const Pattern more(
        "^(?:and )?(?:(?:read|tell|show|give)(?: me)? )?(?:the rest(?: of (?:it|them|the list))?|the (?:others|other "
        "ones)"
        "|(?:what|anything) else(?: is (?:on it|there))?|more|go on|continue|next ones)(?: please)?[.?!]*$",
        Pattern::caseless);
    const std::string core = RequestText::withoutClosing(RequestText::withoutOpening(words));
    if (memory.lists.list.id.empty() || !around.offers("keep_note"))
        return std::nullopt;
    if (more.find(core) && memory.lists.told > 0) {
        RequestMemory next = memory;
        std::string said = ListReply::rest(next.lists);
        return ToolResults::say(std::move(said), std::move(next));
    }
    static const Pattern back(
        "^(?:please )?put (?:it|that|them|those|that one) back(?: on(?: it| there)?)?$", Pattern::caseless);
    if (back.find(core) && !memory.lists.undo.empty())
        return undo(memory, around);
    if (ListReader::read(core)) // names its list itself
        return std::nullopt;
    // "And butter" begins with what opens other requests.
    for (const std::string& said : {core, RequestText::withoutClosing(words)})
        if (const auto intent = ListFollowUp::read(said, memory.lists.items))
            return ListRules::answer(*intent, memory, around);
    return std::nullopt;
}

std::string whatWasDone(const ToolRequest&, const ToolResult& result)
{
    return ListReply::done(result);
}

Skill::Step addAnother(const std::string& words, RequestMemory memory, const RuleSurroundings& around)
{
    return ListRules::answer(ListIntent::ofItems(ListIntent::Kind::add, "", words), std::move(memory), around);
}

RuleStep ofList(const FoundThing& list, const char* key, RequestMemory memory, const RuleSurroundings& around)
{
    return {ToolCalls::call(around, "keep_note", {{"id", list.id}, {key, true}}, "keep lists"), std::move(memory)};
}

RuleStep changeListed(const Wish& wish, const FoundThing& list, RequestMemory memory, const RuleSurroundings& around)
{
    if (wish.kind != Wish::Kind::cancel)
        return ToolResults::say("A list has no time that could be changed.", std::move(memory));
    return ofList(list, "delete", std::move(memory), around);
}

RuleStep pointAt(const FoundThing& list, RequestMemory memory, const RuleSurroundings& around)
{
    return ofList(list, "show", std::move(memory), around);
}

constexpr std::string_view listTools[] = {"keep_note"}; // shared with notes

} // namespace

constinit const Skill ListSkill::row{
    .name = ListRules::skill,
    .tools = listTools,
    .owns = ListRules::isOfLists,
    .ability = ability,
    .readPlain = readPlain,
    .readStatement = readStatement,
    .questionBefore = ListRules::questionBefore,
    .takeResult = ListResults::take,
    .whatWasDone = whatWasDone,
    .goOn = goOn,
    .undo = undo,
    .addAnother = addAnother,
    .changeListed = changeListed,
    .pointAt = pointAt,
};

} // namespace quorvell
