// SPDX-License-Identifier: MIT
#include "Understanding/skills/lists/ListLookup.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "QuorvellCore/text/TextMatch.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/lists/ItemWords.h"
#include "Understanding/skills/lists/ListCalls.h"
#include "Understanding/skills/lists/ListPhrase.h"
#include "Understanding/skills/lists/ListReply.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

namespace quorvell {

namespace {

using Kind = ListIntent::Kind;
using Purpose = ListTalk::Purpose;
using Texts = std::vector<std::string>;

constexpr std::size_t mostAtOnce = 20; ///< Lists that one request takes away.

/// Where something stands.
struct Place {
    std::string id{};
    std::string name{}; ///< Of the list, behind "your".
    std::string text{};
    bool isTicked = false;
};

std::vector<Place> placesUnder(const ToolResult& result, const char* key)
{
    std::vector<Place> places;
    const Json* items = result.list(key);
    for (const Json& item : items ? *items : Json::array())
        places.push_back({readString(item, "id").value_or(""), readString(item, "name").value_or("list"),
            readString(item, "text").value_or(""), readBool(item, "ticked").value_or(false)});
    return places;
}

RuleStep find(const Texts& items, Purpose purpose, RequestMemory memory, const RuleSurroundings& around)
{
    memory.lists.purpose = purpose;
    return ListCalls::call({{"lists", true}, {"has", items}}, memory, around);
}

/// The list on which one would put what is to be bought: its id, and its name behind "your".
FoundThing listForGoods(const ToolResult& result, const Texts& items)
{
    static const Pattern groceries("grocer|supermarket|\\bfood\\b", Pattern::caseless);
    static const Pattern shopping("shopping|\\bbuy\\b|grocer|supermarket", Pattern::caseless);
    const bool areGroceries = std::ranges::all_of(items, ItemWords::isGroceries);
    const Json* lists = result.list("lists");
    for (const Pattern* kind : {areGroceries ? &groceries : &shopping, &shopping})
        for (const Json& list : lists ? *lists : Json::array())
            if (const auto name = readString(list, "name"); name && kind->find(*name))
                return {.id = readString(list, "id").value_or(""), .title = *name};
    return {};
}

RuleStep takeLack(const Json& arguments, const ToolResult& result, RequestMemory memory)
{
    const auto places = placesUnder(result, "held");
    Texts wanted = ListReply::texts(result, "missing");
    std::map<std::string, Texts> standing; // by the list's name
    for (const Place& place : places)
        if (place.isTicked) // ticked long ago, and wanted again
            wanted.push_back(place.text);
        else
            standing[place.name].push_back(place.text);
    std::string said;
    for (const auto& [name, texts] : standing)
        said += (said.empty() ? "" : " ") + ListReply::standing(texts, "already on your " + name);
    if (wanted.empty())
        return ToolResults::say(said, std::move(memory));
    const Texts items = places.empty() ? readStrings(arguments, "has").value_or(wanted) : wanted;
    const FoundThing list = listForGoods(result, items);
    if (list.id.empty())
        return ListCalls::confirming("Should I make a shopping list with " + ListReply::joined(items) + "?",
            {{"list", ListCalls::titleOf("shopping")}, {"create", true}, {"add", items}}, memory);
    const Json adding{{"id", list.id}, {"add", items}};
    return ListCalls::confirming(
        said + (said.empty() ? "" : " ") + "Should I add " + ListReply::joined(items) + " to your " + list.title + "?",
        adding, memory);
}

/// "Delete camping", of a list that is called so.
std::optional<FoundThing> listCalled(const ToolResult& result, const Texts& words)
{
    const Json* lists = words.size() == 1 ? result.list("lists") : nullptr;
    for (const Json& list : lists ? *lists : Json::array()) {
        const std::string title = readString(list, "title").value_or("");
        if (TextMatch::normalized(ListPhrase::nameIn(title).value_or(title)) == TextMatch::normalized(words.front()))
            return FoundThing{
                .id = readString(list, "id").value_or(""), .title = readString(list, "name").value_or("list")};
    }
    return std::nullopt;
}

/// What somebody says that they have done, or need no more, stands on a list: whether it should be ticked, or go.
RuleStep takeStatement(const Json& arguments, const ToolResult& result, bool isDone, RequestMemory memory)
{
    const std::string otherwise = std::exchange(memory.lists.otherwise, {});
    auto places = placesUnder(result, "held");
    if (isDone)
        std::erase_if(places, [](const Place& place) { return place.isTicked; });
    if (places.empty())
        return ToolResults::say(otherwise, std::move(memory));
    const char* key = isDone ? "tick" : "remove";
    const Place& place = places.front();
    Texts texts;
    for (const Place& one : places)
        texts.push_back(one.text);
    const bool areTogether = std::ranges::all_of(places, [&](const Place& one) { return one.id == place.id; });
    if (!areTogether)
        return ListCalls::confirming("I find " + place.text + " on your " + place.name + ", and " + places.back().text
                + " on your " + places.back().name
                + (isDone ? ". Should I tick them off?" : ". Should I take them off?"),
            {{"list", ""}, {key, readStrings(arguments, "has").value_or(Texts{place.text})}}, memory);
    return ListCalls::confirming(ListReply::standing(texts, "on your " + place.name) + " Should I "
            + (isDone ? "tick " : "take ") + ListReply::pronoun(texts) + " off?",
        {{"id", place.id}, {key, texts}}, memory);
}

RuleStep askToChangeAll(const ToolResult& result, Purpose purpose, RequestMemory memory)
{
    std::vector<FoundThing> all;
    const Json* lists = result.list("lists");
    for (const Json& list : lists ? *lists : Json::array())
        all.push_back({.id = readString(list, "id").value_or(""),
            .title = readString(list, "name").value_or("list"),
            .skill = ListCalls::skill});
    all.resize(std::min(all.size(), mostAtOnce));
    if (all.empty())
        return ToolResults::say(ListReply::lists(result), std::move(memory));
    const bool isDeleting = purpose == Purpose::deleteAll;
    const std::string which = all.size() == 1 ? "it" : "all " + std::to_string(all.size());
    const Json first{{"id", all.front().id}, {isDeleting ? "delete" : "clear", true}};
    memory.batch = {.left = std::move(all)};
    return ListCalls::confirming(ListReply::lists(result) + " Should I really "
            + (isDeleting ? "delete " + which + "?" : "take everything off " + which + "?"),
        first, memory);
}

} // namespace

std::optional<RuleStep> ListLookup::answer(
    const ListIntent& intent, RequestMemory memory, const RuleSurroundings& around)
{
    if (intent.kind == Kind::find)
        return find(intent.items, Purpose::tell, std::move(memory), around);
    if (intent.kind == Kind::showEach) {
        Json arguments{{"lists", true}, {"show", true}};
        if (!intent.list.empty())
            arguments["list"] = intent.list;
        return ListCalls::call(arguments, memory, around);
    }
    const bool isOfAll = intent.kind == Kind::deleteAll || intent.kind == Kind::clearAll;
    if (isOfAll)
        memory.lists.purpose = intent.kind == Kind::deleteAll ? Purpose::deleteAll : Purpose::clearAll;
    return isOfAll || intent.kind == Kind::showAll ? std::optional(ListCalls::call({{"lists", true}}, memory, around))
                                                   : std::nullopt;
}

RuleStep ListLookup::whereTo(const ListIntent& intent, RequestMemory memory, const RuleSurroundings& around)
{
    memory.lists.otherwise.clear();
    return find(intent.items, Purpose::where, std::move(memory), around);
}

RuleStep ListLookup::offerToSpare(const ListIntent& intent, RequestMemory memory, const RuleSurroundings& around)
{
    memory.lists.otherwise = "All right. " + ListReply::standing(intent.items, "on none of your lists");
    return find(intent.items, Purpose::spared, std::move(memory), around);
}

RuleStep ListLookup::offerToBuy(const ListIntent& intent, RequestMemory memory, const RuleSurroundings& around)
{
    memory.lists.otherwise.clear();
    return find(intent.items, Purpose::lack, std::move(memory), around);
}

std::optional<RuleStep> ListLookup::further(
    const std::string& said, const RequestMemory& memory, const RuleSurroundings& around)
{
    static const Pattern removing(
        "^(?:remove|delete|erase|take(?: off| out| away)?|drop|scratch(?: off| out)?|strike(?: off| out)?|get rid of"
        "|kill|trash|bin|throw (?:out|away)|lose|cut(?: out)?|ditch|scrap|dump|cross out|omit|leave out) (?:off "
        ")?(?:the following(?: items?)?:? )?(.+?)(?: off| out| away)?$",
        Pattern::caseless);
    static const Pattern ticking(
        "^(?:tick|check|cross|mark|complete|finish)(?: off| out)? (.+?)(?: (?:off|out|(?:as |is )?(?:done|bought|got"
        "|paid|complete|completed|finished|purchased)))*$",
        Pattern::caseless);
    static const Pattern spared(
        "^(?:(?:i|we) (?:do not|don['’]?t|no longer) (?:need|want)(?: to (?:buy|get|do))?"
        "(?: any| the| more)*|(?:i|we) dont (?:need|want)(?: any| the)*|no more|no need for) (.+?)"
        "(?: any ?more| needed| now| on (?:the|my|our) list| on list)*$",
        Pattern::caseless);
    static const Pattern done(
        "^(?:(?:i|we)(?:['’](?:ve|m|re)| have| am| are)? )?(?:(?:already|just|now|finally|all) )*"
        "(?:(?:finished|done)(?: with)?(?: \\w+ing)?|got|\\w+ed|bought|paid|took|did|made|sent|wrote|fed|swept"
        "|told|brought|cut|gave|found|picked up|dropped off) (?:the |my |our |some )?(.+?)"
        "(?:,? (?:already|now|today|yesterday|take (?:it|them|that) off|remove (?:it|them)|cross (?:it|them) off))*$",
        Pattern::caseless);
    static const Pattern elsewhere(
        "\\b(?:from|in|on|of|off) (?:my |the )?(?:calendar|agenda|schedule|diary|reminders?)$", Pattern::caseless);
    const std::string words = trimmed(memory.words, " .!?");
    if (elsewhere.find(words))
        return std::nullopt;
    if (!around.offers(ListCalls::tool) || words.size() > ListIntent::longestRead)
        return std::nullopt;
    RequestMemory next = memory;
    next.lists.moveTo.clear();
    static const Pattern sparing(
        "^(?:cancel|forget(?: about)?|discard|skip) (?:the |my |our )?(.+?)$", Pattern::caseless);
    if (const auto match = sparing.find(words); match && ItemWords::isGroceries(match->texts[0])) {
        next.lists.otherwise = said;
        return find(
            ListIntent::ofItems(Kind::add, "", match->texts[0]).items, Purpose::spared, std::move(next), around);
    }
    for (const auto& [form, kind] : {std::pair(&removing, Kind::remove), std::pair(&ticking, Kind::tick)}) {
        const auto match = form->find(words);
        const auto intent = match ? ListIntent::ofItems(kind, "", match->texts[0]) : ListIntent();
        if (intent.kind != kind || intent.items.empty())
            continue;
        next.lists.purpose = Purpose::tell;
        next.lists.otherwise = said;
        return ListCalls::call({{"list", ""}, {kind == Kind::tick ? "tick" : "remove", intent.items}}, next, around);
    }
    for (const auto& [form, purpose] : {std::pair(&spared, Purpose::spared), std::pair(&done, Purpose::done)}) {
        const auto match = form->find(words);
        const auto intent = match ? ListIntent::ofItems(Kind::add, "", match->texts[0]) : ListIntent();
        if (intent.items.empty())
            continue;
        next.lists.otherwise = said;
        return find(intent.items, purpose, std::move(next), around);
    }
    return std::nullopt;
}

RuleStep ListLookup::take(
    const Json& arguments, const ToolResult& result, RequestMemory memory, const RuleSurroundings&)
{
    const Purpose purpose = std::exchange(memory.lists.purpose, Purpose::tell);
    const auto asked = readStrings(arguments, "has");
    switch (purpose) {
    case Purpose::lack:
        return takeLack(arguments, result, std::move(memory));
    case Purpose::done:
    case Purpose::spared:
        return takeStatement(arguments, result, purpose == Purpose::done, std::move(memory));
    case Purpose::deleteAll:
    case Purpose::clearAll:
        return askToChangeAll(result, purpose, std::move(memory));
    case Purpose::count:
    case Purpose::exists:
    case Purpose::edit:
    case Purpose::where:
    case Purpose::newFor:
    case Purpose::anew:
    case Purpose::another:
    case Purpose::tell:
        break;
    }
    memory.found = ToolResults::things(result.json(), "lists", {.skill = ListCalls::skill});
    if (asked)
        return ToolResults::say(ListReply::heldAnywhere(result), std::move(memory));
    const bool isTold = purpose == Purpose::tell && memberOf(arguments, "show");
    const bool isEdited = purpose == Purpose::edit;
    return ToolResults::say((isTold || isEdited ? ListReply::each(result) : ListReply::lists(result))
            + (isEdited ? " What should I change, and on which list?" : ""),
        std::move(memory));
}

RuleStep ListLookup::takeMissing(const Json& arguments, const ToolResult& result, RequestMemory memory)
{
    const std::string otherwise = std::exchange(memory.lists.otherwise, {});
    const auto places = placesUnder(result, "elsewhere");
    for (const char* key : {"remove", "tick", "untick"})
        if (places.size() == 1 && memberOf(arguments, key)) {
            const std::string them = ListReply::pronoun({places.front().text});
            const std::string verb = std::string_view(key) == "remove" ? "take " + them + " off there?"
                : std::string_view(key) == "tick"                      ? "tick " + them + " off there?"
                                                                       : "take the tick off there?";
            return ListCalls::confirming(
                ListReply::standing({places.front().text}, "not on your " + ListReply::name(result))
                    + (them == "it" ? " It is on your " : " They are on your ") + places.front().name + ". Should I "
                    + verb,
                {{"id", places.front().id}, {key, Texts{places.front().text}}}, memory);
        }
    if (otherwise.empty())
        return ToolResults::say(ListReply::notOnList(result), std::move(memory));
    const auto named =
        memberOf(arguments, "remove") ? listCalled(result, ListReply::texts(result, "missing")) : std::nullopt;
    if (named)
        return ListCalls::confirming(
            "Should I delete your " + named->title + "?", {{"id", named->id}, {"delete", true}}, memory);
    constexpr std::ptrdiff_t mostBlanks = 2; // what is longer is hardly meant for a list
    const std::string missing = ListReply::joined(ListReply::texts(result, "missing"));
    const bool isShort = std::ranges::count(missing, ' ') <= mostBlanks;
    return ToolResults::say(
        otherwise + (isShort ? " There is no such thing on your lists, either." : ""), std::move(memory));
}

std::optional<RuleStep> ListLookup::goOn(
    const ToolRequest& call, const ToolResult& result, const RequestMemory& memory, const RuleSurroundings& around)
{
    const Json arguments = parseJson(call.arguments).value_or(Json::object());
    const bool isDeleting = memberOf(arguments, "delete");
    if (memory.batch.left.empty() || !(isDeleting || memberOf(arguments, "clear"))
        || readString(arguments, "id") != memory.batch.left.front().id)
        return std::nullopt;
    RequestMemory next = memory;
    ThingBatch& batch = next.batch;
    const bool isDone = result.status() == ToolStatus::deleted || result.status() == ToolStatus::changed;
    batch.done += isDone ? 1 : 0;
    if (!isDone)
        batch.failed.push_back(batch.left.front().title);
    batch.left.erase(batch.left.begin());
    if (!batch.left.empty())
        return ListCalls::call({{"id", batch.left.front().id}, {isDeleting ? "delete" : "clear", true}}, next, around);
    const ThingBatch ended = std::exchange(batch, {});
    next.lists = {.names = next.lists.names};
    std::string said = (isDeleting ? "I deleted " : "I took everything off ")
        + (ended.done == 1 ? std::string("one list") : std::to_string(ended.done) + " lists") + ".";
    if (!ended.failed.empty())
        said += " That did not work for: " + ListReply::joined(ended.failed) + ".";
    return ToolResults::say(said + " Say \"undo that\" if you want them back.", std::move(next));
}

} // namespace quorvell
