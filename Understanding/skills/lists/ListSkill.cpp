// SPDX-License-Identifier: MIT
#include "Understanding/skills/lists/ListSkill.h"

#include "QuorvellCore/text/Json.h"
#include "QuorvellCore/text/Pattern.h"
#include "QuorvellCore/text/TextMatch.h"
#include "Understanding/dialogue/ToolCalls.h"
#include "Understanding/dialogue/ToolResults.h"
#include "Understanding/dialogue/reach/OutOfReach.h"
#include "Understanding/dialogue/repair/ActBook.h"
#include "Understanding/skills/lists/ListCalls.h"
#include "Understanding/skills/lists/ListFollowUp.h"
#include "Understanding/skills/lists/ListIntent.h"
#include "Understanding/skills/lists/ListItemTalk.h"
#include "Understanding/skills/lists/ListLookup.h"
#include "Understanding/skills/lists/ListPhrase.h"
#include "Understanding/skills/lists/ListReader.h"
#include "Understanding/skills/lists/ListReply.h"
#include "Understanding/skills/lists/ListResults.h"
#include "Understanding/skills/lists/ListRules.h"
#include "Understanding/skills/lists/ListStatement.h"
#include "Understanding/words/RequestText.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

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
    const bool onlyNames = intent->kind == ListIntent::Kind::show;
    Request request{.answer = [intent = *std::move(intent)](RequestMemory memory, const RuleSurroundings& around) {
        return ListRules::answer(intent, std::move(memory), around);
    }};
    if (onlyNames) // "my shopping list" is an answer where that was asked
        request.mayAnswer = [](const PendingQuestion& asked, const RuleSurroundings&) {
            return asked.kind == &ListRules::whichList || asked.kind == &ListRules::whereTo;
        };
    return request;
}

/// "We need milk" wishes for nothing yet: it is asked.
FoundRequest offering(const ListIntent& intent)
{
    return Request{.answer = [intent](RequestMemory memory, const RuleSurroundings& around) {
        return ListLookup::offerToBuy(intent, std::move(memory), around);
    }};
}

/// What is asked about lists as such, and what they cannot; nothing for anything else.
std::optional<std::string_view> saidOfLists(const std::string& core)
{
    struct Row {
        Pattern form;
        std::string_view reply;
    };
    static const Row rows[] = {
        {Pattern("^(?:(?:please|tell me|show me|explain|do you know) )*how (?:(?:do|can|could|should|would) "
                 "?(?:i|we|you)|to)\\b.*"
                 "\\b(?:lists?|items?)$",
             Pattern::caseless),
            "Say for example: \"make a camping list\", \"add milk to my shopping list\", \"remove milk from my list\" "
            "or "
            "\"delete the camping list\"."},
        {Pattern("^(?:save|keep|store) (?:(?:this|the|my|that|our) )?(?:\\w+ ){0,2}list(?: as .{1,40})?$",
             Pattern::caseless),
            "There is nothing to save: lists are kept as you change them."},
        {Pattern("^(?:(?:make|create) (?:a |me a )?(?:copy|duplicate|backup) of|copy|duplicate|print(?: "
                 "out)?|export|merge|combine|"
                 "join)(?: (?:my|the|our|this|that|all))* (?:\\w+ ){0,3}lists?(?: (?:and|with|to|into) (?:\\w+ "
                 "){0,4}lists?(?: called .*)?)?$",
             Pattern::caseless),
            "I can't copy, print or merge lists. I can make them, read them and change what is on them."},
        {Pattern(
             "^(?!.*\\b(?:to|on) my (?:shopping|to|grocery)).*\\b(?:contacts?|phone|address|e-?mail(?:ing)?|mailing) "
             "list$",
             Pattern::caseless),
            "I don't keep an address book."},
        {Pattern("^(?:text|message|whatsapp|sms|fax|share|forward|send|e-?mail) .*\\blists?(?: to .+)?$",
             Pattern::caseless),
            "I can't send or share anything from here. I can read the list to you."},
        {Pattern("^(?:create|make|start|open|show|read|give|tell)(?: me)? (?:an? |the |my )?(?:new )?list of (?:all "
                 ")?(?:my |the )?contacts$",
             Pattern::caseless),
            "I don't keep an address book."},
        {Pattern("^(?:restore|recover|undelete|bring back|get back) (?:\\w+ ){0,3}lists?$", Pattern::caseless),
            "Right after a list was deleted, \"undo that\" brings it back. What was deleted earlier lies in the trash "
            "of the "
            "notebook."},
        {Pattern("^(?:close|exit|leave|stop|end|lock|hide) (?:(?:the|my|this|that) )?(?:\\w+ ){0,2}list$",
             Pattern::caseless),
            "A list needs no closing, and I can't lock or hide one. It is kept as it is."},
        {Pattern("^unsubscribe\\b.*\\blists?$", Pattern::caseless), "I can't read or send mail and messages."},
        {Pattern("^(?:make|create|start|build) (?:me )?.*\\blist (?:the )?(?:same|identical|like) (?:as|to)? "
                 "?(?:the|my) .*\\blist$",
             Pattern::caseless),
            "I can't copy, print or merge lists. I can make them, read them and change what is on them."},
        {Pattern("^(?:when|on what day|what day|who|what time) (?:did|was|were|is|has|have)? "
                 "?(?:.*\\b)?lists?\\b.*\\b(?:made|created?|make|started|start"
                 "|added|changed|updated|written)\\b.*$|^(?:who|when) (?:made|created|did i "
                 "(?:make|create|start|write)) .*\\blists?$"
                 "|^which lists? (?:was|were|did i) (?:made|created|make|create|started)\\b.*$",
             Pattern::caseless),
            "I can't tell when a list was made or changed, or by whom. I can read you what is on it."},
        {Pattern("^(?:remove|delete|find|merge) (?:all |any |the )*(?:duplicates?|doubles?|repeated items?)\\b.*$",
             Pattern::caseless),
            "I can't look for doubles. What I add to a list is put on it only once."},
    };
    for (const Row& row : rows)
        if (row.form.find(core))
            return row.reply;
    return std::nullopt;
}

FoundRequest readPlain(const std::string& core, const RuleSurroundings& around)
{
    if (!around.offers("keep_note"))
        return std::nullopt;
    if (const auto said = saidOfLists(core))
        return Request{.answer = [said](RequestMemory memory, const RuleSurroundings&) {
            return ToolResults::say(std::string(*said), std::move(memory));
        }};
    if (auto request = requestFor(ListReader::read(core)))
        return request;
    const auto lack = ListStatement::readLack(core);
    return lack && !lack->items.empty() ? offering(*lack) : std::nullopt;
}

FoundRequest readStatement(const std::string& core, const RuleSurroundings& around)
{
    if (const auto spared = around.offers("keep_note") ? ListStatement::readSpared(core) : std::nullopt)
        return Request{.answer = [spared](RequestMemory memory, const RuleSurroundings& beside) {
            return ListLookup::offerToSpare(*spared, std::move(memory), beside);
        }};
    auto intent = around.offers("keep_note") ? ListStatement::readStatement(core) : std::nullopt;
    const bool isOffer = intent && intent->kind == ListIntent::Kind::add && !intent->items.empty();
    if (isOffer && intent->list.empty())
        return Request{.answer = [intent](RequestMemory memory, const RuleSurroundings& beside) {
            return ListLookup::whereTo(*intent, std::move(memory), beside);
        }};
    return isOffer && intent->list == "shopping" ? offering(*intent) : requestFor(std::move(intent));
}

Skill::Step undo(RequestMemory memory, const RuleSurroundings& around)
{
    const std::string token = std::exchange(memory.lists.undo, {});
    if (token.empty())
        return std::nullopt;
    const Json arguments{{"id", memory.lists.list.id}, {"undo", token}}; // the id makes it a matter of lists
    return RuleStep{ToolCalls::call(around, "keep_note", arguments, "keep lists"), std::move(memory)};
}

using Step = Skill::Step;

/// "The rest": of the list that was told in parts.
Step tellRest(const std::string& core, const RequestMemory& memory)
{
    static const Pattern more(
        "^(?:and )?(?:(?:read|tell|show|give)(?: me)? )?(?:the rest(?: of (?:it|them|the list))?|the (?:others|other "
        "ones)"
        "|(?:what|anything) else(?: is (?:on it|there))?|more|go on|continue|next ones)(?: please)?[.?!]*$",
        Pattern::caseless);
    if (!more.find(core) || memory.lists.told == 0)
        return std::nullopt;
    RequestMemory next = memory;
    std::string said = ListReply::rest(next.lists);
    return ToolResults::say(std::move(said), std::move(next));
}

/// The things that were just added or the like, where that is all that was done: under that key.
std::optional<std::vector<std::string>> justDone(const RequestMemory& memory, const char* key)
{
    if (!ActBook::wasJustDone(memory) || ActBook::newest(memory, 1).size() != 1
        || memory.acts.back().skill != ListRules::skill)
        return std::nullopt;
    const auto arguments = parseJson(memory.acts.back().call.arguments);
    return arguments ? readStrings(*arguments, key) : std::nullopt;
}

/// What was done last is taken back and done so instead.
RuleStep insteadOfLast(const Json& arguments, const RequestMemory& memory, const RuleSurroundings& around)
{
    return ActBook::takeBack(
        {.left = ActBook::newest(memory, 1), .call = ToolRequest{ListCalls::tool, dumpJson(arguments)}}, memory,
        around);
}

/// "To the party list", behind "add lemonade".
Step toOtherList(const std::string& core, const RequestMemory& memory, const RuleSurroundings& around)
{
    static const Pattern form(
        "^(?:(?:no|sorry|i mean|i meant)[,]? )*(?:to|onto|on to|on|in|into) (.+)$", Pattern::caseless);
    const auto match = form.find(core);
    const auto name = match ? ListPhrase::nameIn(match->texts[0]) : std::nullopt;
    const auto added = name && !name->empty() ? justDone(memory, "add") : std::nullopt;
    if (!added)
        return std::nullopt;
    const Json arguments{{"list", *name}, {"add", *added}};
    // "Groceries" and "grocery list" are one; the tool says that it is there.
    constexpr std::size_t ending = 3;
    const std::string wanted = TextMatch::normalized(*name);
    const std::string last = memory.lists.names.empty() ? "" : TextMatch::normalized(memory.lists.names.back());
    const std::string start = wanted.substr(0, wanted.size() > 2 * ending ? wanted.size() - ending : wanted.size());
    if (last.starts_with(start) && last.size() <= wanted.size() + ending)
        return ListCalls::call(arguments, memory, around);
    return insteadOfLast(arguments, memory, around);
}

/// "No, I mean the coffee."
Step toOtherItem(const std::string& core, const RequestMemory& memory, const RuleSurroundings& around)
{
    const auto other = ListItemTalk::readOther(core);
    if (!other)
        return std::nullopt;
    for (const char* key : {"add", "tick", "untick", "remove"}) {
        const auto items = justDone(memory, key);
        const bool isThere = std::string_view(key) == "add" || other->starts_with('#')
            || !ListItemTalk::named(memory.lists.items, *other).empty();
        if (!items || items->size() != 1 || !isThere)
            continue;
        Json arguments = parseJson(memory.acts.back().call.arguments).value_or(Json::object());
        arguments[key] = std::vector<std::string>{*other};
        return insteadOfLast(arguments, memory, around);
    }
    return std::nullopt;
}

/// "Tea", "bread and a newspaper", right behind what made the list or put something on it. Where something else is
/// asked, only what can hardly be an answer.
Step dictated(const std::string& core, const RequestMemory& memory, const RuleSurroundings& around)
{
    const ListTalk& talk = memory.lists;
    if (talk.dictatedAt == 0 || talk.dictatedAt + 1 != memory.turn)
        return std::nullopt;
    const auto items = ListFollowUp::readDictated(core, talk);
    if (!items || (!items->isSure && (memory.pending.isOpen() || OutOfReach::of(core))))
        return std::nullopt;
    constexpr std::ptrdiff_t mostBlanks = 3; // of a thing that nobody would take for a sentence
    // What may be said of the talk itself, or is the start of a sentence, is asked about.
    static const Pattern mayBeTalk(
        "^(?:later|done|nothing|none|finished|ready|skip|all|any|next|last|soon|every\\w*|some\\w*|"
        "not|just|only|more|my|our|your|his|her|their|as|so|this|enough)\\b"
        "|(?:week|month|year|later|soon|said|ed)$",
        Pattern::caseless);
    const bool isFirstThing = talk.isNew && std::ranges::count(core, ' ') <= mostBlanks && !mayBeTalk.find(core);
    return items->isSure || isFirstThing ? ListRules::answer(items->intent, memory, around)
                                         : ListRules::offer(items->intent, "", memory);
}

Step goOn(const std::string& words, const RequestMemory& memory, const RuleSurroundings& around)
{
    const std::string core = RequestText::withoutClosing(RequestText::withoutOpening(words));
    if (memory.lists.list.id.empty() || !around.offers("keep_note"))
        return std::nullopt;
    for (const auto goes : {toOtherList, toOtherItem})
        if (auto step = goes(core, memory, around))
            return step;
    if (auto step = tellRest(core, memory))
        return step;
    if (ListReader::read(core)) // names its list itself
        return std::nullopt;
    // "And butter" begins with what opens other requests.
    for (const std::string& said : {core, RequestText::withoutClosing(words)}) {
        auto intent = ListItemTalk::readRenaming(said, memory.lists);
        if (!intent)
            intent = ListFollowUp::read(said, memory.lists);
        if (!intent)
            intent = ListItemTalk::read(said, memory.lists);
        if (intent)
            return ListRules::answer(*intent, memory, around);
    }
    return dictated(core, memory, around);
}

Step comeBack(const std::string& words, const RequestMemory& memory, const RuleSurroundings& around)
{
    const std::string core = RequestText::withoutClosing(RequestText::withoutOpening(words));
    if (memory.lists.list.id.empty() || !around.offers("keep_note"))
        return std::nullopt;
    for (const auto goes : {toOtherList, toOtherItem})
        if (auto step = goes(core, memory, around))
            return step;
    if (ListReader::read(core))
        return std::nullopt;
    const auto intent = ListItemTalk::read(core, memory.lists);
    if (!intent) {
        auto step = dictated(core, memory, around);
        return step ? step : dictated(RequestText::withoutClosing(words), memory, around); // "and a newspaper"
    }
    // The same may be what a reminder is for.
    const bool isOfReminder = memory.topic == "reminders" && intent->kind != ListIntent::Kind::remove
        && (intent->items.empty() || !ListItemTalk::named({memory.reminder.title}, intent->items.front()).empty());
    return isOfReminder ? std::nullopt : Step(ListRules::answer(*intent, memory, around));
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
    .lookFurther = ListLookup::further,
    .whatWasDone = whatWasDone,
    .goOn = goOn,
    .comeBack = comeBack,
    .undo = undo,
    .addAnother = addAnother,
    .changeListed = changeListed,
    .pointAt = pointAt,
};

} // namespace quorvell
