// SPDX-License-Identifier: MIT
#include "Understanding/skills/lists/ListRules.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Json.h"
#include "QuorvellCore/text/Pattern.h"
#include "QuorvellCore/text/TextMatch.h"
#include "Understanding/dialogue/Pointing.h"
#include "Understanding/dialogue/ToolCalls.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/lists/ItemWords.h"
#include "Understanding/skills/lists/ListPhrase.h"
#include "Understanding/skills/lists/ListReply.h"
#include "Understanding/skills/reminders/ReminderRules.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <utility>

namespace quorvell {

namespace {

using Kind = ListIntent::Kind;
using Step = std::optional<RuleStep>;

constexpr const char* tool = "keep_note";
constexpr std::array itemKeys{"add", "tick", "untick", "remove"};

RuleStep calling(const Json& arguments, RequestMemory memory, const RuleSurroundings& around)
{
    return {ToolCalls::call(around, tool, arguments, "keep lists"), std::move(memory)};
}

/// The key of the tool under which the items of a request stand; empty for requests without any.
const char* keyOf(Kind kind)
{
    switch (kind) {
    case Kind::create:
    case Kind::add:
        return "add";
    case Kind::tick:
        return "tick";
    case Kind::untick:
        return "untick";
    case Kind::remove:
        return "remove";
    case Kind::has:
        return "has";
    case Kind::showAll:
    case Kind::show:
    case Kind::count:
    case Kind::exists:
    case Kind::replace:
    case Kind::clear:
    case Kind::clearTicked:
    case Kind::rename:
    case Kind::deleteList:
        break;
    }
    return "";
}

/// As a new list is called.
std::string titleOf(const std::string& name)
{
    static const Pattern whole("\\b(?:lists?|checklists?)$| for ", Pattern::caseless);
    const bool isPlain = std::ranges::count(name, ' ') <= 1 && !name.ends_with('s');
    return withUpperCaseFirst(name) + (isPlain && !whole.find(name) ? " list" : "");
}

Json argumentsOf(const ListIntent& intent, const RequestMemory& memory)
{
    Json arguments = Json::object();
    const FoundThing& spoken = memory.lists.list;
    if (intent.kind == Kind::create)
        arguments = {{"list", titleOf(intent.list)}, {"create", true}};
    else if (intent.list.empty() && !spoken.id.empty())
        arguments["id"] = spoken.id;
    else
        arguments["list"] = intent.list;
    if (const std::string_view key = keyOf(intent.kind); !key.empty() && !intent.items.empty())
        arguments[std::string(key)] = intent.items;
    switch (intent.kind) {
    case Kind::show:
    case Kind::count:
    case Kind::exists:
        arguments["show"] = true;
        break;
    case Kind::replace:
        arguments["replace"] = intent.items.front();
        arguments["by"] = intent.items.back();
        break;
    case Kind::clear:
        arguments["clear"] = true;
        break;
    case Kind::clearTicked:
        arguments["clear_ticked"] = true;
        break;
    case Kind::rename:
        arguments["rename"] = intent.title;
        break;
    case Kind::deleteList:
        arguments["delete"] = true;
        break;
    case Kind::showAll:
    case Kind::create:
    case Kind::add:
    case Kind::tick:
    case Kind::untick:
    case Kind::remove:
    case Kind::has:
        break;
    }
    return arguments;
}

std::string questionFor(Kind kind)
{
    return kind == Kind::add ? "What should I add?"
        : kind == Kind::tick ? "What should I tick off?"
        : kind == Kind::has  ? "What should I look for?"
                             : "Which item should I take off?";
}

Step takeItems(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings& around)
{
    const auto arguments = parseJson(asked.arguments).value_or(Json::object());
    ListIntent intent{.list = readString(arguments, "list").value_or("")};
    for (const Kind kind : {Kind::add, Kind::tick, Kind::untick, Kind::remove, Kind::has})
        if (asked.task == keyOf(kind))
            intent.kind = kind;
    const std::string items = core;
    const ListIntent read = ListIntent::ofItems(intent.kind, intent.list, items);
    return read.items.empty() && read.kind == intent.kind ? Step()
                                                          : Step(ListRules::answer(read, std::move(memory), around));
}

Step takeName(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings& around)
{
    static const Pattern lead(
        "^(?:(?:call|name|title) it|it (?:is|should be) (?:called|named)|it['’]?s called)\\s+", Pattern::caseless);
    Json arguments = parseJson(asked.arguments).value_or(Json::object());
    const std::string said = lead.replaceAll(core, "");
    const std::string name = ListPhrase::nameIn(said).value_or(ListPhrase::withoutEnds(said));
    if (name.empty())
        return std::nullopt;
    arguments["list"] = titleOf(name);
    arguments["create"] = true;
    return calling(arguments, std::move(memory), around);
}

/// The call that waits, about the list of that id.
Json withList(Json arguments, const std::string& id)
{
    arguments.erase("list");
    arguments["id"] = id;
    return arguments;
}

Step takeList(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings& around)
{
    const auto arguments = parseJson(asked.arguments).value_or(Json::object());
    const std::string said = ListPhrase::nameIn(core).value_or("");
    auto list = Pointing::at(memory.found, core, around);
    if (!list && !said.empty()) {
        const auto named = Pointing::named(memory.found, said);
        const auto same = std::ranges::find_if(named, [&](const FoundThing& one) {
            return TextMatch::normalized(ListPhrase::nameIn(one.title).value_or(one.title))
                == TextMatch::normalized(said);
        });
        list = named.size() == 1  ? std::optional(named.front())
            : same != named.end() ? std::optional(*same)
                                  : std::nullopt;
    }
    return list ? Step(calling(withList(arguments, list->id), std::move(memory), around)) : std::nullopt;
}

/// The same call with one item instead of the words that were unclear.
Json withItem(Json arguments, const std::string& words, const std::string& item)
{
    for (const char* key : itemKeys)
        if (auto items = readStrings(arguments, key)) {
            std::ranges::replace(*items, words, item);
            arguments[key] = *items;
        }
    if (readString(arguments, "replace") == words)
        arguments["replace"] = item;
    return arguments;
}

Step takeItem(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings& around)
{
    const auto arguments = parseJson(asked.arguments).value_or(Json::object());
    std::vector<FoundThing> candidates;
    for (const std::string& text : memory.lists.candidates)
        candidates.push_back({.id = text, .title = text});
    const auto same = std::ranges::find_if(candidates,
        [&](const FoundThing& one) { return TextMatch::normalized(one.title) == TextMatch::normalized(core); });
    const auto item = same != candidates.end() ? std::optional(*same) : Pointing::at(candidates, core, around);
    return item ? Step(calling(withItem(arguments, asked.task, item->title), std::move(memory), around)) : std::nullopt;
}

/// Whether that list is what reminders are when there is no list of that name.
bool isOfDuties(std::string_view name)
{
    static const Pattern duties("^(?:to[ -]?dos?|todos?|tasks?|chores|errands)$", Pattern::caseless);
    return duties.find(name).has_value();
}

/// The same asked of the reminders; nothing for what they cannot do.
Step byReminders(const Json& arguments, RequestMemory memory, const RuleSurroundings& around)
{
    if (!around.offers("set_reminder"))
        return std::nullopt;
    const auto ticked = readStrings(arguments, "tick");
    if (memberOf(arguments, "show"))
        return ReminderRules::change({.kind = ReminderChange::Kind::list}, std::move(memory), around);
    if (memberOf(arguments, "clear") || memberOf(arguments, "delete"))
        return ReminderRules::change({.kind = ReminderChange::Kind::cancelAll}, std::move(memory), around);
    if (ticked && ticked->size() == 1)
        return ReminderRules::change(
            {.kind = ReminderChange::Kind::done, .task = ticked->front()}, std::move(memory), around);
    return std::nullopt;
}

RuleStep confirming(std::string question, const Json& arguments, RequestMemory memory)
{
    return RuleStep::asking({.kind = &ToolResults::confirmation,
                                .question = std::move(question),
                                .tool = tool,
                                .arguments = dumpJson(arguments)},
        std::move(memory));
}

/// There is no such list: whether it should be made is asked where that helps.
RuleStep takeNoList(
    const Json& arguments, const ToolResult& result, RequestMemory memory, const RuleSurroundings& around)
{
    const std::string wanted = readString(arguments, "list").value_or("");
    const auto items = readStrings(arguments, "add");
    if (memberOf(arguments, "id")) {
        memory.lists = {};
        return ToolResults::say("That list is no longer there.", std::move(memory));
    }
    if (wanted.empty() || isOfDuties(wanted)) {
        if (auto step = byReminders(arguments, memory, around))
            return *std::move(step);
    }
    if (wanted.empty() && items)
        return RuleStep::asking({.kind = &ListRules::whatName,
                                    .question = "You have no list yet. What should I call it?",
                                    .arguments = dumpJson(Json{{"add", *items}})},
            std::move(memory));
    if (wanted.empty())
        return ToolResults::say("You have no list yet.", std::move(memory));
    const bool takes = memberOf(arguments, "tick") || memberOf(arguments, "untick") || memberOf(arguments, "remove")
        || memberOf(arguments, "delete") || memberOf(arguments, "rename") || memberOf(arguments, "clear")
        || memberOf(arguments, "clear_ticked") || memberOf(arguments, "replace") || memberOf(arguments, "has");
    const std::string none = "You have no " + ListReply::name(result) + ".";
    if (takes || memory.lists.purpose == ListTalk::Purpose::exists)
        return ToolResults::say(none, std::move(memory));
    Json made{{"list", titleOf(wanted)}, {"create", true}};
    if (items)
        made["add"] = *items;
    return confirming(none + " Should I make one" + (items ? " with " + ListReply::joined(*items) : "") + "?", made,
        std::move(memory));
}

RuleStep takeWhichList(const Json& arguments, const ToolResult& result, RequestMemory memory)
{
    memory.found = ToolResults::things(result.json(), "lists", {.skill = ListRules::skill});
    if (memory.found.size() == 1)
        return confirming(result.wordsForUser(), withList(arguments, memory.found.front().id), std::move(memory));
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
        again = withList(arguments, *id);
    if (memory.lists.candidates.size() == 1)
        return confirming(
            result.wordsForUser(), withItem(again, words, memory.lists.candidates.front()), std::move(memory));
    return RuleStep::asking(
        {.kind = &ListRules::whichItem, .question = result.wordsForUser(), .task = words, .arguments = dumpJson(again)},
        std::move(memory));
}

/// What the conversation is about from now on.
void talkOf(const ToolResult& result, ListTalk& talk)
{
    const std::string id = result.string("id").value_or("");
    if (id != talk.list.id)
        talk = {.purpose = talk.purpose};
    talk.list = {.id = id, .title = result.string("title").value_or(""), .skill = ListRules::skill};
    talk.undo = result.string("undo").value_or(talk.undo);
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

RuleStep takeShown(const Json& arguments, const ToolResult& result, RequestMemory memory)
{
    const auto purpose = std::exchange(memory.lists.purpose, ListTalk::Purpose::tell);
    std::string said = ListReply::list(result, memory.lists);
    if (memberOf(arguments, "has"))
        said = ListReply::held(result);
    else if (purpose == ListTalk::Purpose::count)
        said = ListReply::count(result);
    else if (purpose == ListTalk::Purpose::exists)
        said = "Yes. " + said;
    return ToolResults::say(std::move(said), std::move(memory));
}

RuleStep takeKnown(const Json& arguments, const ToolResult& result, RequestMemory memory)
{
    const auto items = readStrings(arguments, "add");
    const std::string known = "You already have a " + ListReply::name(result);
    if (!items || items->empty())
        return ToolResults::say(known + ". " + ListReply::count(result), std::move(memory));
    const Json adding{{"id", memory.lists.list.id}, {"add", *items}};
    return confirming(known + ". Should I add " + ListReply::joined(*items) + " to it?", adding, std::move(memory));
}

} // namespace

const QuestionKind ListRules::whatItems{takeItems};
const QuestionKind ListRules::whatName{takeName};
const QuestionKind ListRules::whichList{takeList};
const QuestionKind ListRules::whichItem{takeItem};

bool ListRules::isOfLists(const ToolRequest& call)
{
    constexpr std::array keys{"list", "id", "lists"};
    const auto arguments = call.name == tool ? parseJson(call.arguments) : std::nullopt;
    return arguments && std::ranges::any_of(keys, [&](const char* key) { return memberOf(*arguments, key); });
}

std::string ListRules::questionBefore(const ToolRequest& call)
{
    const auto arguments = parseJson(call.arguments).value_or(Json::object());
    const std::string name = readString(arguments, "list").value_or("");
    const std::string list = name.empty() ? "that list" : "your " + name + (name.ends_with("list") ? "" : " list");
    const auto items = [&](const char* key) {
        return ListReply::joined(readStrings(arguments, key).value_or(std::vector<std::string>{}));
    };
    if (memberOf(arguments, "create"))
        return "Should I make " + list + "?";
    if (memberOf(arguments, "delete"))
        return "Should I delete " + list + "?";
    if (memberOf(arguments, "add"))
        return "Should I add " + items("add") + " to " + list + "?";
    if (memberOf(arguments, "remove"))
        return "Should I take " + items("remove") + " off " + list + "?";
    if (memberOf(arguments, "tick"))
        return "Should I tick off " + items("tick") + "?";
    const bool onlyLooks = memberOf(arguments, "show") || memberOf(arguments, "lists") || memberOf(arguments, "has");
    return onlyLooks ? "" : "Should I change " + list + "?";
}

RuleStep ListRules::answer(const ListIntent& intent, RequestMemory memory, const RuleSurroundings& around)
{
    using Purpose = ListTalk::Purpose;
    memory.lists.purpose = intent.kind == Kind::count ? Purpose::count
        : intent.kind == Kind::exists                 ? Purpose::exists
                                                      : Purpose::tell;
    if (intent.kind == Kind::showAll)
        return calling({{"lists", true}}, std::move(memory), around);
    const bool isOfReminders = intent.list.empty() && memory.lists.list.id.empty() && memory.topic == "reminders";
    if (isOfReminders) {
        if (auto step = byReminders(argumentsOf(intent, memory), memory, around))
            return *std::move(step);
    }
    if (intent.kind == Kind::create && intent.list.empty()) {
        const Json arguments = intent.items.empty() ? Json::object() : Json{{"add", intent.items}};
        return RuleStep::asking(
            {.kind = &whatName, .question = "What should I call the list?", .arguments = dumpJson(arguments)},
            std::move(memory));
    }
    const std::string_view key = keyOf(intent.kind);
    if (intent.kind == Kind::create || key.empty() || !intent.items.empty())
        return calling(argumentsOf(intent, memory), std::move(memory), around);
    if (intent.kind != Kind::add && !memory.lists.last.empty()) { // "that one"
        ListIntent same = intent;
        same.items = memory.lists.last;
        return calling(argumentsOf(same, memory), std::move(memory), around);
    }
    return RuleStep::asking({.kind = &whatItems,
                                .question = questionFor(intent.kind),
                                .task = std::string(key),
                                .arguments = dumpJson(Json{{"list", intent.list}})},
        std::move(memory));
}

RuleStep ListRules::takeResult(
    const ToolRequest& call, const ToolResult& result, RequestMemory memory, const RuleSurroundings& around)
{
    if (auto failure = ToolResults::failure(result))
        return ToolResults::say(*std::move(failure), std::move(memory));
    const Json arguments = parseJson(call.arguments).value_or(Json::object());
    switch (result.status()) {
    case ToolStatus::noList:
        return takeNoList(arguments, result, std::move(memory), around);
    case ToolStatus::whichList:
        memory.talkOf(skill);
        return takeWhichList(arguments, result, std::move(memory));
    case ToolStatus::lists:
        memory.talkOf(skill);
        memory.found = ToolResults::things(result.json(), "lists", {.skill = skill});
        return ToolResults::say(ListReply::lists(result), std::move(memory));
    default:
        break;
    }
    memory.talkOf(skill);
    talkOf(result, memory.lists);
    switch (result.status()) {
    case ToolStatus::list:
        return takeShown(arguments, result, std::move(memory));
    case ToolStatus::whichItem:
        return takeWhichItem(arguments, result, std::move(memory));
    case ToolStatus::known:
        return takeKnown(arguments, result, std::move(memory));
    case ToolStatus::notOnList:
        return ToolResults::say(ListReply::notOnList(result), std::move(memory));
    case ToolStatus::kept:
        return ToolResults::say(ListReply::made(result), std::move(memory));
    case ToolStatus::deleted:
        memory.lists = {.undo = memory.lists.undo};
        return ToolResults::say(
            "I deleted your " + ListReply::name(result) + ". Say \"undo that\" if you want it back.",
            std::move(memory));
    default:
        break;
    }
    const bool tellsOfChange = result.status() == ToolStatus::changed;
    return ToolResults::say(tellsOfChange ? ListReply::changed(result) : "Done.", std::move(memory));
}

} // namespace quorvell
