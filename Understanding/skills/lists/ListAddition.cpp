// SPDX-License-Identifier: MIT
#include "Understanding/skills/lists/ListAddition.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/lists/ItemWords.h"
#include "Understanding/skills/lists/ListPhrase.h"

#include <utility>

namespace quorvell {

namespace {

using Kind = ListIntent::Kind;

std::optional<ListIntent> additionTo(std::string list)
{
    return ListIntent{.kind = Kind::add, .list = std::move(list)};
}

std::optional<ListIntent> additionOf(std::string list, const std::string& items)
{
    return ListIntent::ofItems(Kind::add, std::move(list), items);
}

} // namespace

std::optional<ListIntent> ListAddition::read(const std::string& text)
{
    static const Pattern towards(ListPhrase::links("to|onto|on"), Pattern::caseless);
    static const Pattern verb(
        "^(?:add|ad|put down|put|include|insert|enter|place|stick|pop|throw|append|write(?: down)?|jot(?: down)?"
        "|note(?: down)?|jot|record|save|get|log|bung|chuck|also add|register|feed|attach|assign|key in|type(?: "
        "in)?|mark down"
        "|slot|slip|store|push)(?: in)?\\s+",
        Pattern::caseless);
    static const Pattern links(ListPhrase::links("to|on to|on|onto|in|into|at|under|in to|2"), Pattern::caseless);
    static const Pattern listFirst(
        "^(?:(?:to|on|onto|in|into) )?(.+?\\b" + ListPhrase::listWord + ")(?::|,)?\\s+(?:the following:? )?(.+)$",
        Pattern::caseless);
    static const Pattern update("^(?:update|extend|fill) (.+?) (?:with|by adding) (.+)$", Pattern::caseless);
    static const Pattern sure(
        "^(?:make sure|ensure|see to it|i want|i need|we need|i would like|i['’]d like|let us have)(?: that)? (.+)$",
        Pattern::caseless);
    static const Pattern passive("^(.+?)(?: (?:should|must|needs? to|has to|have to|can|is to|ought to) (?:be|go)| "
                                 "(?:goes|belongs))(?: (?:added|put|written))? "
                                 "((?:to|on|onto|in|into) .+)$",
        Pattern::caseless);
    static const Pattern copula("(?:\\s+(?:is|are|gets?|to be|be|put|added))+$", Pattern::caseless);
    static const Pattern calledList(
        "^(?:the )?(.+?\\b" + ListPhrase::listWord + ")\\s*(?:add|needs|:)\\s*(.+)$", Pattern::caseless);
    static const Pattern duty("^(?:add|new|create|make)(?: an?)?(?: new)? (?:to[ -]?do|todo|task)(?: item)?(?! "
                              "list\\b)(?: to(?! (?:my|the|our)\\b)|:)? (.+)$",
        Pattern::caseless);
    static const Pattern bareDuty(
        "^(?:add|create|make|new)(?: an?| one)?(?: new| more)* (?:to[ -]?do|todo|task)(?: item)?$", Pattern::caseless);
    static const Pattern intoList("^(?:put|add|include|insert|write) (?:in|on|to|into|onto) (.+)$", Pattern::caseless);
    if (bareDuty.find(text))
        return additionTo("to do");
    if (const auto match = intoList.find(text))
        if (auto name = ListPhrase::nameIn(match->texts[0]))
            return additionTo(*std::move(name));
    if (const auto match = duty.find(text); match && !ListPhrase::itemsIn(text, links))
        return additionOf("to do", match->texts[0]);
    static const Pattern following("^(?:add|put|include) (?:these|this|the following)(?: things?| items?)? "
                                   "(?:to|on|in|onto|into) (.+?)[:,] ?(.+)$",
        Pattern::caseless);
    if (const auto match = following.find(text)) {
        if (const auto name = ListPhrase::nameIn(match->texts[0]))
            return additionOf(*name, match->texts[1]);
    }
    // "To do: renew the insurance", "append to tasks: send the invoice"
    static const Pattern headed(
        "^(?:(?:add|append|put|write) (?:to|on|onto) (?:my |the )?)?(to[ -]?do|tasks?|shopping|groceries|"
        "grocery|errands|chores)(?: list)?: ?(.+)$"
        "|^(?:add|append|put|write) (?:to|on|onto) (?:my |the )?(to[ -]?do|tasks|shopping|groceries|errands|"
        "chores) (?!list\\b)(.+)$",
        Pattern::caseless);
    static const Pattern itemHeaded("^(?:add )?(?:new )?list item:? (.+)$", Pattern::caseless);
    static const Pattern noted(
        "^(?:(?:make|write|put|add|leave) (?:a |me a )?)?note (?:on|in|to) (.+?\\blist) (?:to|that says|saying|"
        "that (?:i|we) need(?: to)?|for|about|:)(?: buy| get)? (.+)$",
        Pattern::caseless);
    static const Pattern andMore(
        "^(?:add|put|include) (.+? (?:to|on|in|onto) .+?\\blist),? (?:and|plus)(?: then| also)? "
        "(?!(?:then|also|on|to|in|my|the|put|add)\\b)(.+)$",
        Pattern::caseless);
    static const Pattern goodsOf("^(.+) ((?:shopping|grocery|groceries)(?: list)?)$", Pattern::caseless);
    if (const auto match = headed.find(text)) {
        const std::size_t form = match->texts[0].empty() ? 2 : 0;
        static const Pattern task("^tasks?$", Pattern::caseless);
        static const Pattern loose(",? (?:please )?(?:add|put) (?:it |this |that )?(?:to|on) .+$", Pattern::caseless);
        return additionOf(
            task.find(match->texts[form]) ? "to do" : match->texts[form], loose.replaceAll(match->texts[form + 1], ""));
    }
    if (const auto match = itemHeaded.find(text))
        return additionOf("", match->texts[0]);
    if (const auto match = noted.find(text))
        if (const auto name = ListPhrase::nameIn(match->texts[0]))
            return additionOf(*name, match->texts[1]);
    if (const auto match = andMore.find(text); match && ListPhrase::nameIn(match->texts[1])) { // two lists
        const auto parts = ListPhrase::itemsIn(match->texts[0], links);
        auto intent = parts && !parts->before.empty() ? additionOf("", parts->before) : std::nullopt;
        if (intent)
            intent->isOfSeveral = true;
        return intent;
    }
    if (const auto match = andMore.find(text))
        if (const auto parts = ListPhrase::itemsIn(match->texts[0], links); parts && !parts->before.empty())
            return additionOf(parts->list, parts->before + ", " + match->texts[1]);
    if (const auto match = goodsOf.find(text); match && ItemWords::isGroceries(match->texts[0]))
        return additionOf(*ListPhrase::nameIn("my " + match->texts[1]), match->texts[0]);
    if (const auto match = verb.find(text)) {
        const std::string rest = text.substr(match->range.end);
        if (const auto parts = ListPhrase::itemsIn(rest, links); parts && !parts->before.empty())
            return additionOf(parts->list, parts->before);
        static const Pattern led("^(?:to|on|onto|in|into) ", Pattern::caseless);
        const auto first = led.find(rest) ? listFirst.find(rest) : std::nullopt;
        const auto name = first ? ListPhrase::nameIn(first->texts[0]) : std::nullopt;
        if (name)
            return additionOf(*name, first->texts[1]);
        const auto bare = led.find(rest) ? ListPhrase::nameIn(rest.substr(led.find(rest)->range.end)) : std::nullopt;
        return bare ? additionTo(*bare) : std::nullopt;
    }
    static const Pattern bareUpdate("^update (.+)$", Pattern::caseless);
    if (const auto match = update.find(text) ? std::nullopt : bareUpdate.find(text)) {
        auto name = ListPhrase::nameIn(match->texts[0]);
        return name ? additionTo(*std::move(name)) : std::nullopt;
    }
    if (const auto match = update.find(text)) {
        const auto name = ListPhrase::nameIn(match->texts[0]);
        return name ? additionOf(*name, match->texts[1]) : std::nullopt;
    }
    if (const auto match = sure.find(text)) {
        const auto parts = ListPhrase::endingIn(match->texts[0], links);
        if (parts && !parts->before.empty())
            return additionOf(parts->list, copula.replaceAll(parts->before, ""));
    }
    if (const auto match = passive.find(text)) {
        const auto parts = ListPhrase::endingIn("x " + match->texts[1], links);
        if (parts && parts->before == "x")
            return additionOf(parts->list, match->texts[0]);
    }
    if (const auto match = calledList.find(text)) {
        const auto name = ListPhrase::nameIn(match->texts[0]);
        if (name)
            return additionOf(*name, match->texts[1]);
    }
    // "Eggs to the shopping list" begins with no word that asks for anything else.
    static const Pattern others(
        "^(?:find|look|search|undo|un[a-z]+|cancel|make|mark|sort|print|copy|edit|modify|get|see|display|start|finish|"
        "complete|transfer|increase|decrease|reduce|raise|scratch|clear|empty|reset|wipe|erase|drop|turn|set|buy|say|"
        "repeat|stop|help|bring|pull|push|review|"
        "count|compare|strike|kill|abolish|hide|email|text|export|sync|upload|download|create|edit|there|it|this|"
        "everything|anything|nothing|what|which|is|are|do|did|does|have|can|read|show|tell|list|open|remove|delete|"
        "take|tick|check|cross|move|change"
        "|rename|go|remind|give|send|share|play|how|where|who|when|call)\\b|\\b(?:i|you|we|"
        "should|add|put|not|don['’]?t|what|whats|what['’]s|which|how|where|is|are)\\b",
        Pattern::caseless);
    const auto parts = others.find(text) ? std::nullopt : ListPhrase::endingIn(text, towards);
    if (!parts || parts->before.empty())
        return std::nullopt;
    auto intent = additionOf(parts->list, parts->before);
    // "Milk on the list" may be a question; "milk and eggs on the list" hardly is.
    static const Pattern leading("\\b(?:to|onto) (?:the |my |our )?[^,]*$", Pattern::caseless);
    return leading.find(text) || intent->items.size() > 1 ? intent : std::nullopt;
}

} // namespace quorvell
