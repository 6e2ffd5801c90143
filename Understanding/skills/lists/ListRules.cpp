// SPDX-License-Identifier: MIT
#include "Understanding/skills/lists/ListRules.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Json.h"
#include "QuorvellCore/text/Pattern.h"
#include "QuorvellCore/text/TextMatch.h"
#include "Understanding/dialogue/Pointing.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/skills/lists/ListCalls.h"
#include "Understanding/skills/lists/ListItemTalk.h"
#include "Understanding/skills/lists/ListLookup.h"
#include "Understanding/skills/lists/ListPhrase.h"
#include "Understanding/skills/lists/ListReply.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <utility>

namespace quorvell {

namespace {

using Kind = ListIntent::Kind;
using Step = std::optional<RuleStep>;

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
    case Kind::move:
        return "remove";
    case Kind::keepOnly:
        return "keep_only";
    case Kind::has:
        return "has";
    case Kind::showAll:
    case Kind::showEach:
    case Kind::find:
    case Kind::show:
    case Kind::count:
    case Kind::exists:
    case Kind::replace:
    case Kind::clear:
    case Kind::clearTicked:
    case Kind::edit:
    case Kind::rename:
    case Kind::deleteList:
    case Kind::deleteAll:
    case Kind::clearAll:
    case Kind::sort:
        break;
    }
    return "";
}

Json argumentsOf(const ListIntent& intent, const RequestMemory& memory)
{
    Json arguments = Json::object();
    const FoundThing& spoken = memory.lists.list;
    if (intent.kind == Kind::create)
        arguments = {{"list", ListCalls::titleOf(intent.list)}, {"create", true}};
    else if (intent.list.empty() && !spoken.id.empty())
        arguments["id"] = spoken.id;
    else
        arguments["list"] = intent.list;
    if (const std::string_view key = keyOf(intent.kind); !key.empty() && !intent.items.empty())
        arguments[std::string(key)] = intent.items;
    if (!intent.added.empty())
        arguments["add"] = intent.added;
    switch (intent.kind) {
    case Kind::show:
    case Kind::count:
    case Kind::exists:
    case Kind::edit:
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
    case Kind::showEach:
    case Kind::find:
    case Kind::deleteAll:
    case Kind::clearAll:
    case Kind::create:
    case Kind::add:
    case Kind::tick:
    case Kind::untick:
    case Kind::remove:
    case Kind::move:
    case Kind::keepOnly:
    case Kind::has:
    case Kind::sort:
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
        if (readString(arguments, "what").value_or("") == keyOf(kind))
            intent.kind = kind;
    if (const auto other = ListItemTalk::read(core, memory.lists)) // "untick the bathroom"
        return ListRules::answer(*other, std::move(memory), around);
    const ListIntent read = ListIntent::ofItems(intent.kind, intent.list, core);
    return read.items.empty() && read.kind == intent.kind ? Step()
                                                          : Step(ListRules::answer(read, std::move(memory), around));
}

/// "To the party list", "the shopping one".
Step takeWhere(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings& around)
{
    static const Pattern lead(
        "^(?:(?:to|onto|on to|on|in|into|it goes on|put it on) )*(?:the |my |our )?", Pattern::caseless);
    static const Pattern tail(" one$", Pattern::caseless);
    static const Pattern spoken(
        "^(?:it|that|that list|this list|the same|same|list|same list|last list|last)?$", Pattern::caseless);
    Json arguments = parseJson(asked.arguments).value_or(Json::object());
    const std::string said = lead.replaceAll(ListPhrase::withoutEnds(core), "");
    constexpr std::ptrdiff_t mostBlanks = 3;
    const std::string name = ListPhrase::nameIn(said).value_or(tail.replaceAll(said, ""));
    if (spoken.find(said) && !memory.lists.list.id.empty())
        return ListCalls::call(ListCalls::withList(arguments, memory.lists.list.id), memory, around);
    if (name.empty() || std::ranges::count(name, ' ') > mostBlanks || ListPhrase::isSentence(name)
        || ListPhrase::isKeptElsewhere(name))
        return std::nullopt;
    arguments["list"] = name;
    return ListCalls::call(arguments, memory, around);
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
    arguments["list"] = ListCalls::titleOf(name);
    arguments["create"] = true;
    return ListCalls::call(arguments, memory, around);
}

Step takeTitle(
    const std::string& core, const PendingQuestion& asked, RequestMemory memory, const RuleSurroundings& around)
{
    static const Pattern lead("^(?:(?:call|name|rename) it|to|it (?:is|should be) called)\\s+", Pattern::caseless);
    Json arguments = parseJson(asked.arguments).value_or(Json::object());
    const std::string title = ListPhrase::withoutEnds(lead.replaceAll(core, ""));
    if (title.empty())
        return std::nullopt;
    arguments["rename"] = title;
    return ListCalls::call(arguments, memory, around);
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
    return list ? Step(ListCalls::call(ListCalls::withList(arguments, list->id), memory, around)) : std::nullopt;
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
    return item ? Step(ListCalls::call(ListCalls::withItem(arguments, asked.task, item->title), memory, around))
                : std::nullopt;
}

ListTalk::Purpose purposeOf(const ListIntent& intent)
{
    using Purpose = ListTalk::Purpose;
    if (intent.kind == Kind::create)
        return intent.beside == ListIntent::Beside::another ? Purpose::another
            : intent.beside == ListIntent::Beside::anew     ? Purpose::anew
                                                            : Purpose::tell;
    return intent.kind == Kind::count ? Purpose::count
        : intent.kind == Kind::exists ? Purpose::exists
        : intent.kind == Kind::edit   ? Purpose::edit
                                      : Purpose::tell;
}

} // namespace

const QuestionKind ListRules::whatItems{takeItems};
const QuestionKind ListRules::whatName{takeName};
const QuestionKind ListRules::whatTitle{takeTitle};
const QuestionKind ListRules::whereTo{takeWhere};
const QuestionKind ListRules::whichList{takeList};
const QuestionKind ListRules::whichItem{takeItem};

bool ListRules::isOfLists(const ToolRequest& call)
{
    constexpr std::array keys{"list", "id", "lists"};
    const auto arguments = call.name == ListCalls::tool ? parseJson(call.arguments) : std::nullopt;
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
    if (memberOf(arguments, "keep_only"))
        return "Should I take everything but " + items("keep_only") + " off " + list + "?";
    if (memberOf(arguments, "remove"))
        return "Should I take " + items("remove") + " off " + list + "?";
    if (memberOf(arguments, "tick"))
        return "Should I tick off " + items("tick") + "?";
    const bool onlyLooks = memberOf(arguments, "show") || memberOf(arguments, "lists") || memberOf(arguments, "has");
    return onlyLooks ? "" : "Should I change " + list + "?";
}

RuleStep ListRules::offer(const ListIntent& intent, const std::string& lead, RequestMemory memory)
{
    const std::string items = ListReply::joined(intent.items);
    const std::string arguments = dumpJson(argumentsOf(intent, memory));
    return RuleStep::asking({.kind = &ToolResults::confirmation,
                                .question = lead + (lead.empty() ? "" : " ") + "Should I add " + items + " to "
                                    + (intent.list.empty() ? "the list" : "your " + intent.list + " list") + "?",
                                .task = items,
                                .tool = ListCalls::tool,
                                .arguments = arguments},
        std::move(memory));
}

RuleStep ListRules::askWhere(const ListIntent& intent, RequestMemory memory, const std::vector<std::string>& names)
{
    const std::string choice = names.size() < 2 ? "" : ": " + ListReply::eitherOf(names);
    return RuleStep::asking(
        {.kind = &whereTo,
            .question = "To which list should I add " + ListReply::joined(intent.items) + choice + "?",
            .task = ListReply::joined(intent.items),
            .arguments = dumpJson(Json{{"add", intent.items}})},
        std::move(memory));
}

RuleStep ListRules::answer(const ListIntent& intent, RequestMemory memory, const RuleSurroundings& around)
{
    memory.lists.otherwise.clear();
    memory.lists.purpose = purposeOf(intent);
    memory.lists.moveTo = intent.kind == Kind::move ? intent.title : std::string();
    memory.lists.movedFrom.clear();
    if (intent.kind == Kind::sort)
        return ToolResults::say("I can't put a list into another order: things stay as they were added.", memory);
    if (intent.isOnlyTold) {
        const Json arguments = argumentsOf(intent, memory);
        return ListCalls::confirming(questionBefore({ListCalls::tool, dumpJson(arguments)}), arguments, memory);
    }
    if (intent.kind == Kind::rename && intent.title.empty())
        return RuleStep::asking({.kind = &whatTitle,
                                    .question = "What should I call it?",
                                    .arguments = dumpJson(Json{{"list", intent.list}})},
            std::move(memory));
    if (intent.isOfSeveral)
        return ListRules::askWhere(intent, std::move(memory));
    if (intent.isFirst && !intent.items.empty())
        return ListRules::offer(intent, "New things go to the end of a list.", memory);
    if (auto step = ListLookup::answer(intent, memory, around))
        return *std::move(step);
    const bool isOfReminders = intent.list.empty() && memory.lists.list.id.empty() && memory.topic == "reminders";
    if (isOfReminders) {
        if (auto step = ListCalls::byReminders(argumentsOf(intent, memory), memory, around))
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
        return ListCalls::call(argumentsOf(intent, memory), memory, around);
    if (intent.kind != Kind::add && intent.isOfLast && !memory.lists.last.empty()) {
        ListIntent same = intent;
        same.items = memory.lists.last;
        return ListCalls::call(argumentsOf(same, memory), memory, around);
    }
    return RuleStep::asking({.kind = &whatItems,
                                .question = questionFor(intent.kind),
                                .arguments = dumpJson(Json{{"list", intent.list}, {"what", key}})},
        std::move(memory));
}

} // namespace quorvell
