// SPDX-License-Identifier: MIT
#include "Understanding/skills/lists/ListResults.h"

#include "QuorvellCore/text/Json.h"
#include "QuorvellCore/text/Pattern.h"
#include "QuorvellCore/text/TextMatch.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/lists/ListCalls.h"
#include "Understanding/skills/lists/ListLookup.h"
#include "Understanding/skills/lists/ListPhrase.h"
#include "Understanding/skills/lists/ListReply.h"
#include "Understanding/skills/lists/ListRules.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvell {

namespace {

/// Whether the user spoke of a list, and not of something that may be one: "add tea to the menu".
bool isClearlyList(const std::string& name, const std::string& words)
{
    static const Pattern list("\\b" + ListPhrase::listWord + "\\b", Pattern::caseless);
    static const Pattern known("^(?:groceries|grocery|shopping|errands)$", Pattern::caseless);
    return ListCalls::isOfDuties(name) || known.find(name) || list.find(words);
}

/// There is no such list: whether it should be made is asked where that helps.
RuleStep takeNoList(
    const Json& arguments, const ToolResult& result, RequestMemory memory, const RuleSurroundings& around)
{
    const std::string wanted = readString(arguments, "list").value_or("");
    const auto items = readStrings(arguments, "add");
    if (const std::string otherwise = std::exchange(memory.lists.otherwise, {}); !otherwise.empty())
        return ToolResults::say(otherwise, std::move(memory));
    if (memberOf(arguments, "id")) {
        memory.lists = {};
        return ToolResults::say("That list is no longer there.", std::move(memory));
    }
    const bool asksForIt = memory.lists.purpose == ListTalk::Purpose::exists;
    if (!asksForIt && (wanted.empty() || ListCalls::isOfDuties(wanted))) {
        if (auto step = ListCalls::byReminders(arguments, memory, around))
            return *std::move(step);
    }
    if (wanted.empty() && items)
        return RuleStep::asking({.kind = &ListRules::whatName,
                                    .question = "You have no list yet. What should I call it?",
                                    .arguments = dumpJson(Json{{"add", *items}})},
            std::move(memory));
    if (wanted.empty())
        return ToolResults::say("You have no list yet.", std::move(memory));
    const bool takes = memberOf(arguments, "tick") || memberOf(arguments, "keep_only") || memberOf(arguments, "untick")
        || memberOf(arguments, "remove") || memberOf(arguments, "delete") || memberOf(arguments, "rename")
        || memberOf(arguments, "clear") || memberOf(arguments, "clear_ticked") || memberOf(arguments, "replace")
        || memberOf(arguments, "has");
    const std::string none = "You have no " + ListReply::name(result) + ".";
    if (takes || asksForIt)
        return ToolResults::say(none, std::move(memory));
    Json made{{"list", ListCalls::titleOf(wanted)}, {"create", true}};
    if (items)
        made["add"] = *items;
    if (items && isClearlyList(wanted, memory.words)) { // it can be taken back, and it is told
        memory.lists.purpose = ListTalk::Purpose::newFor;
        return ListCalls::call(made, memory, around);
    }
    // Making that list settles it.
    return RuleStep::asking(
        {.kind = &ToolResults::confirmation,
            .question = none + " Should I make one" + (items ? " with " + ListReply::joined(*items) : "") + "?",
            .task = ListReply::name(result),
            .tool = ListCalls::tool,
            .arguments = dumpJson(made)},
        std::move(memory));
}

RuleStep takeWhichList(const Json& arguments, const ToolResult& result, RequestMemory memory)
{
    memory.found = ToolResults::things(result.json(), "lists", {.skill = ListRules::skill});
    if (memory.found.size() == 1)
        return ListCalls::confirming(
            result.wordsForUser(), ListCalls::withList(arguments, memory.found.front().id), memory);
    return RuleStep::asking(
        {.kind = &ListRules::whichList,
            .question = result.wordsForUser().empty() ? "Which list do you mean?" : result.wordsForUser(),
            .arguments = dumpJson(arguments)},
        std::move(memory));
}

RuleStep takeWhichItem(const Json& arguments, const ToolResult& result, RequestMemory memory)
{
    const Json* unclear = result.list("unclear");
    if (!unclear || unclear->empty())
        return ToolResults::say("I am not sure which one you mean.", std::move(memory));
    const std::string words = readString(unclear->front(), "words").value_or("");
    memory.lists.candidates = readStrings(unclear->front(), "candidates").value_or(std::vector<std::string>{});
    Json again = arguments;
    if (const auto id = result.string("id"))
        again = ListCalls::withList(arguments, *id);
    if (memory.lists.candidates.size() == 1)
        return ListCalls::confirming(
            result.wordsForUser(), ListCalls::withItem(again, words, memory.lists.candidates.front()), memory);
    return RuleStep::asking(
        {.kind = &ListRules::whichItem, .question = result.wordsForUser(), .task = words, .arguments = dumpJson(again)},
        std::move(memory));
}

/// What the conversation is about from now on.
void talkOf(const ToolResult& result, ListTalk& talk)
{
    const std::string id = result.string("id").value_or("");
    if (id != talk.list.id)
        talk = {.names = std::move(talk.names),
            .dictatedAt = talk.dictatedAt,
            .purpose = talk.purpose,
            .moveTo = std::move(talk.moveTo),
            .movedFrom = std::move(talk.movedFrom)};
    talk.list = {.id = id, .title = result.string("title").value_or(""), .skill = ListRules::skill};
    talk.undo = result.string("undo").value_or(talk.undo);
    const std::string name = ListPhrase::nameIn(talk.list.title).value_or(talk.list.title);
    std::erase(talk.names, name);
    if (talk.names.size() == ListTalk::mostNames)
        talk.names.erase(talk.names.begin());
    talk.names.push_back(name);
    talk.last.clear();
    for (const char* key : {"added", "again", "ticked", "unticked", "already"})
        for (const std::string& text : ListReply::texts(result, key))
            talk.last.push_back(text);
    for (const std::string& text : talk.last)
        if (std::ranges::find(talk.items, text) == talk.items.end() && talk.items.size() < ListTalk::mostItems)
            talk.items.push_back(text);
    for (const std::string& text : ListReply::texts(result, "removed"))
        std::erase(talk.items, text);
    if (const auto replaced = ListReply::texts(result, "replaced"); replaced.size() == 2) {
        std::ranges::replace(talk.items, replaced.front(), replaced.back());
        talk.last = {replaced.back()};
    }
}

/// Whether bare words go on the list from here.
void dictate(const ToolResult& result, RequestMemory& memory)
{
    ListTalk& talk = memory.lists;
    const bool isMade = result.status() == ToolStatus::kept && !memberOf(result.json(), "added");
    const bool goesOn = talk.isNew && talk.dictatedAt + 1 == memory.turn;
    const bool isAdded = result.status() == ToolStatus::changed && memberOf(result.json(), "added");
    talk.isNew = isMade || (isAdded && goesOn);
    talk.dictatedAt = isMade || isAdded || result.status() == ToolStatus::kept ? memory.turn : 0;
}

RuleStep takeShown(const Json& arguments, const ToolResult& result, RequestMemory memory)
{
    const auto purpose = std::exchange(memory.lists.purpose, ListTalk::Purpose::tell);
    std::string said = ListReply::list(result, memory.lists);
    if (memberOf(arguments, "has"))
        said = ListReply::held(result, readStrings(arguments, "has").value_or(std::vector<std::string>{}));
    else if (purpose == ListTalk::Purpose::count)
        said = ListReply::count(result);
    else if (purpose == ListTalk::Purpose::exists)
        said = "Yes. " + said;
    else if (purpose == ListTalk::Purpose::edit)
        said += " What should I add, change or take off?";
    return ToolResults::say(std::move(said), std::move(memory));
}

/// What an item is that was to be made so and is.
std::string_view alreadyWas(const Json& arguments)
{
    return memberOf(arguments, "add") ? "there" : memberOf(arguments, "tick") ? "ticked off" : "open";
}

RuleStep takeKnown(const Json& arguments, const ToolResult& result, RequestMemory memory)
{
    const auto items = readStrings(arguments, "add");
    const std::string known = "You already have a " + ListReply::name(result);
    const auto purpose = std::exchange(memory.lists.purpose, ListTalk::Purpose::tell);
    if (purpose == ListTalk::Purpose::another)
        return RuleStep::asking({.kind = &ListRules::whatName,
                                    .question = known + ". What should I call the other one?",
                                    .arguments = dumpJson(items ? Json{{"add", *items}} : Json::object())},
            std::move(memory));
    const auto open = readInteger(result.json(), "open").value_or(0);
    if (purpose == ListTalk::Purpose::anew && open > 0 && (!items || items->empty()))
        return ListCalls::confirming(known + ", with " + ListReply::amount(static_cast<std::size_t>(open))
                + " on it. Should I empty it and start anew?",
            {{"id", memory.lists.list.id}, {"clear", true}}, memory);
    if (!items || items->empty())
        return ToolResults::say(known + ". " + ListReply::count(result), std::move(memory));
    const Json adding{{"id", memory.lists.list.id}, {"add", *items}};
    return ListCalls::confirming(known + ". Should I add " + ListReply::joined(*items) + " to it?", adding, memory);
}

/// Which lists there are for what should go on one; what stands on one already is told.
RuleStep takeWhereItIs(const Json& arguments, const ToolResult& result, RequestMemory memory)
{
    memory.lists.purpose = ListTalk::Purpose::tell;
    const auto items = readStrings(arguments, "has").value_or(std::vector<std::string>{});
    const Json* held = result.list("held");
    const auto text =
        held && held->size() == 1 && items.size() == 1 && !readBool(held->front(), "ticked").value_or(false)
        ? readString(held->front(), "text")
        : std::nullopt;
    if (text && TextMatch::normalized(*text) == TextMatch::normalized(items.front()))
        return ToolResults::say(
            ListReply::standing({*text}, "already on your " + readString(held->front(), "name").value_or("list")),
            std::move(memory));
    constexpr std::size_t mostNamed = 5;
    std::vector<std::string> names;
    const Json* lists = result.list("lists");
    for (const Json& list : lists ? *lists : Json::array())
        if (names.size() < mostNamed)
            names.push_back(readString(list, "name").value_or("list"));
    return ListRules::askWhere({.kind = ListIntent::Kind::add, .items = items}, std::move(memory), names);
}

RuleStep takeMade(const ToolResult& result, RequestMemory memory)
{
    const auto purpose = std::exchange(memory.lists.purpose, ListTalk::Purpose::tell);
    const auto added = ListReply::texts(result, "added");
    const bool isForThem = purpose == ListTalk::Purpose::newFor && !added.empty();
    return ToolResults::say(isForThem
            ? "You had no " + ListReply::name(result) + ", so I made one, with " + ListReply::joined(added) + "."
            : ListReply::made(result),
        std::move(memory));
}

/// What was moved is off its list: it goes to the other one, which is made where there is none. Then it is told.
std::optional<RuleStep> goOnMoving(
    const Json& arguments, const ToolResult& result, const RequestMemory& memory, const RuleSurroundings& around)
{
    RequestMemory next = memory;
    ListTalk& talk = next.lists;
    const auto removed = ListReply::texts(result, "removed");
    if (!talk.moveTo.empty() && !removed.empty()) {
        talk.movedFrom = ListReply::name(result);
        return ListCalls::call({{"list", std::exchange(talk.moveTo, {})}, {"add", removed}}, next, around);
    }
    const auto items = readStrings(arguments, "add");
    if (talk.movedFrom.empty() || !items || items->empty())
        return std::nullopt;
    const std::string things = ListReply::joined(*items);
    if (result.status() == ToolStatus::noList)
        return ListCalls::call({{"list", ListCalls::titleOf(readString(arguments, "list").value_or(""))},
                                   {"create", true}, {"add", *items}},
            next, around);
    const std::string from = std::exchange(talk.movedFrom, {});
    if (result.status() == ToolStatus::whichList) // not yet
        talk.movedFrom = from;
    if (result.status() != ToolStatus::changed && result.status() != ToolStatus::kept)
        return std::nullopt;
    if (ListReply::name(result) == from)
        return ToolResults::say(ListReply::standing(*items, "already on your " + from), std::move(next));
    const std::string onto = "your " + ListReply::name(result);
    const bool isNew = result.status() == ToolStatus::kept;
    return ToolResults::say("I moved " + things + " from your " + from + " to " + onto
            + (isNew ? ", which I made for " + ListReply::pronoun(*items) + "." : "."),
        std::move(next));
}

} // namespace

RuleStep ListResults::take(
    const ToolRequest& call, const ToolResult& result, RequestMemory memory, const RuleSurroundings& around)
{
    if (auto failure = ToolResults::failure(result))
        return ToolResults::say(*std::move(failure), std::move(memory));
    const Json arguments = parseJson(call.arguments).value_or(Json::object());
    if (auto step = ListLookup::goOn(call, result, memory, around))
        return *std::move(step);
    switch (result.status()) {
    case ToolStatus::noList:
        if (auto step = goOnMoving(arguments, result, memory, around))
            return *std::move(step);
        return takeNoList(arguments, result, std::move(memory), around);
    case ToolStatus::whichList:
        memory.talkOf(ListRules::skill);
        return takeWhichList(arguments, result, std::move(memory));
    case ToolStatus::lists:
        memory.talkOf(ListRules::skill);
        if (memory.lists.purpose == ListTalk::Purpose::where)
            return takeWhereItIs(arguments, result, std::move(memory));
        return ListLookup::take(arguments, result, std::move(memory), around);
    default:
        break;
    }
    if (auto step = goOnMoving(arguments, result, memory, around)) {
        step->memory.talkOf(ListRules::skill);
        return *std::move(step);
    }
    memory.talkOf(ListRules::skill);
    if (result.status() == ToolStatus::undone)
        return ToolResults::say(
            "Undone: " + result.string("what").value_or("the last change") + ".", std::move(memory));
    if (result.status() == ToolStatus::notOnList && (!result.string("id") || !memory.lists.otherwise.empty()))
        return ListLookup::takeMissing(arguments, result, std::move(memory));
    memory.lists.otherwise.clear();
    talkOf(result, memory.lists);
    dictate(result, memory);
    switch (result.status()) {
    case ToolStatus::list:
        return takeShown(arguments, result, std::move(memory));
    case ToolStatus::whichItem:
        return takeWhichItem(arguments, result, std::move(memory));
    case ToolStatus::known:
        return takeKnown(arguments, result, std::move(memory));
    case ToolStatus::notOnList:
        return ListLookup::takeMissing(arguments, result, std::move(memory));
    case ToolStatus::kept:
        return takeMade(result, std::move(memory));
    case ToolStatus::deleted:
        memory.lists.names.pop_back();
        memory.lists = {.names = std::move(memory.lists.names), .undo = memory.lists.undo};
        return ToolResults::say(
            "I deleted your " + ListReply::name(result) + ". Say \"undo that\" if you want it back.",
            std::move(memory));
    default:
        break;
    }
    const bool tellsOfChange = result.status() == ToolStatus::changed;
    return ToolResults::say(
        tellsOfChange ? ListReply::changed(result, alreadyWas(arguments)) : "Done.", std::move(memory));
}

} // namespace quorvell
