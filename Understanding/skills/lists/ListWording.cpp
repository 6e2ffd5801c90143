// SPDX-License-Identifier: MIT
#include "Understanding/skills/lists/ListWording.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/lists/ItemWords.h"
#include "Understanding/skills/lists/ListIntent.h"
#include "Understanding/skills/lists/ListPhrase.h"
#include "Understanding/words/RequestText.h"

#include <array>
#include <optional>
#include <utility>

namespace quorvell {

namespace {

/// What people call a list without the word, patterns.
const std::string knownLists = "groceries|grocery|shopping|to[ -]?do|todo|tasks|errands|chores";
const std::string anyList = "(?:(?:my|the|our|this|that) )?(?:(?:[\\w'’-]+ ){0,4}?" + ListPhrase::listWord
    + "|(?:" + knownLists + ")(?! (?:check)?list))";
constexpr std::string_view addingVerbs =
    "(?:please )?(?:also )?(?:add|put|include|insert|enter|append|write(?: down)?|note(?: down)?|\\+)(?: in| on)?";
constexpr std::string_view removingVerbs =
    "(?:please )?(?:remove|delete|erase|take (?:off|out)|cross (?:off|out)|scratch|strike|drop)";

std::string signsAndBlanks(std::string_view core)
{
    static const Pattern blanks("\\s+");
    static const Pattern glued("\\b(wish|shopping|grocery|to-?do|packing|guest|gift)(?=lists?\\b)", Pattern::caseless);
    // Placeholders of forms: "add (item) to (list) grocery list".
    static const Pattern slot("[(\\[](?:list|list name|name)[)\\]] (?=\\S)", Pattern::caseless);
    static const Pattern brackets("[()\\[\\]]");
    std::string text = trimmed(blanks.replaceAll(brackets.replaceAll(slot.replaceAll(core, ""), ""), " "), " .!?");
    for (const auto& match : glued.findAll(text)) // one: nobody glues two
        if (match.range.end < text.size()) {
            text.insert(match.range.end, " ");
            break;
        }
    return text;
}

/// Courtesies, reasons and what is only told around a request.
std::string withoutSideRemarks(std::string text)
{
    static const Pattern doIt(
        "[,.?!;]? (?:(?:can|could|would|will) you )?(?:please )?do (?:it|that|this)(?: for me)?(?=[?.!;]|$)",
        Pattern::caseless);
    static const Pattern tail(
        "(?: or not|,? slowly|,? quickly|,? one by one|,? (?:once )?again(?= please$|$)|,? (?:back )?to me|,? with me"
        "|,? (?:i am|i['’]m|we are|we['’]re) (?:at|in|on|done|finished|going|off)\\b.*"
        "|,? (?:as well|besides)|,? (?:i|we) (?:do not|don['’]?t|no longer) (?:need|want) (?:it|them|that|this)(?: any "
        "?more| now)?)+$",
        Pattern::caseless);
    static const Pattern order(
        "^((?:add|put) .+\\b" + ListPhrase::listWord + ") (?:before|after|above|below|behind|under) .+$",
        Pattern::caseless);
    static const Pattern lead(
        "^(?:(?:also|and|then|now|next|so|well|plus)[,]? )+(?=(?:add|put|include|remove|delete|take|make|create|read|"
        "write|show|what|tick|check|cross)\\b)",
        Pattern::caseless);
    static const Pattern enough("^(?:i|we) (?:have|have got|['’]ve got) (?:enough|plenty of) [^,.]+?(?:,|\\.)? (?:so "
                                ")?(?=(?:remove|delete|take)\\b)",
        Pattern::caseless);
    static const Pattern done("^(?:i am |i['’]m )?(?:all )?(?:done|finished) with (" + anyList
            + ")[,.]? (?:so )?(clear|wipe|empty|delete|remove|erase) (?:it|that)$",
        Pattern::caseless);
    static const Pattern also(
        "^((?:i forgot to |please )*(?:add|put) [^.?!]+)[.?!]+ (?:and )?also (?:add |put )?([^.?!]+)$",
        Pattern::caseless);
    text = lead.replaceAll(doIt.replaceAll(text, ""), "");
    static const Pattern toBuy("^((?:what|which|how|show|tell|read)\\b.*\\b" + ListPhrase::listWord
            + ")(?: that)?(?: (?:i|we) (?:still )?(?:need|have))? to (?:buy|get|do|purchase|pick up)$",
        Pattern::caseless);
    if (const auto match = toBuy.find(text))
        text = match->texts[0];
    if (const auto match = order.find(text)) // things stay as they are added
        text = match->texts[0];
    if (const auto match = also.find(text))
        text = match->texts[0] + " and " + match->texts[1];
    if (const auto match = done.find(text))
        return match->texts[1] + " " + match->texts[0];
    return enough.replaceAll(tail.replaceAll(text, ""), "");
}

/// "Please be adding milk", "would you mind creating a list".
std::string withoutGerund(std::string text)
{
    constexpr auto gerunds = std::to_array<std::pair<std::string_view, std::string_view>>(
        {{"adding", "add"}, {"putting", "put"}, {"creating", "create"}, {"making", "make"}, {"removing", "remove"},
            {"deleting", "delete"}, {"starting", "start"}, {"reading", "read"}, {"taking", "take"},
            {"including", "include"}, {"writing", "write"}, {"preparing", "prepare"}, {"compiling", "compile"},
            {"building", "build"}, {"clearing", "clear"}, {"showing", "show"}});
    static const Pattern gerund("^(?:(?:be|do|start|keep|begin) )?(\\w+ing) (?=\\w)", Pattern::caseless);
    if (const auto match = gerund.find(text))
        for (const auto& [said, plain] : gerunds)
            if (RequestText::phrase(match->texts[0]) == said)
                return std::string(plain) + " " + text.substr(match->range.end);
    return text;
}

/// "Every list" is all of them, "the list grocery" the grocery list.
std::string withPlainNames(const std::string& text)
{
    static const Pattern every("\\b(?:every|each)(?: single)? list$", Pattern::caseless);
    static const Pattern turned("\\b(to|from|on|in|off|the|delete|remove|clear) list "
                                "[\"“'‘]?(grocery|groceries|shopping|to[ -]?do|todo)\\b[\"”'’]?(?! list)",
        Pattern::caseless);
    const auto match = turned.find(text);
    if (!match)
        return every.replaceAll(text, "all my lists");
    return text.substr(0, match->range.start) + match->texts[0] + " " + match->texts[1] + " list"
        + text.substr(match->range.end);
}

/// "To-do's" and "to dos" are the to-do list.
std::string withDutiesAsList(const std::string& text)
{
    static const Pattern duties("\\bto[ -]?do['’]?s\\b(?! (?:check ?)?lists?)", Pattern::caseless);
    return duties.replaceAll(text, "to do list");
}

bool namesList(const std::string& phrase)
{
    static const Pattern verb(
        "\\b(?:start|open|begin|get|find|create|make|new|an?|and|with|called|named|update|edit|change|modify)\\b",
        Pattern::caseless);
    static const Pattern known("^(?:(?:my|the|our) )?(?:" + knownLists + ")$", Pattern::caseless);
    const bool isNamed = known.find(phrase) || ListPhrase::nameIn(phrase);
    return isNamed && !verb.find(phrase) && !ListPhrase::isSentence(ListPhrase::nameIn(phrase).value_or(std::string()));
}

std::string asList(const std::string& phrase)
{
    static const Pattern owner("^(?:my|the|our|this|that) ", Pattern::caseless);
    static const Pattern word("(?:" + ListPhrase::listWord + "|groceries|errands|chores)$", Pattern::caseless);
    return (owner.find(phrase) ? "" : "my ") + phrase + (word.find(phrase) ? "" : " list");
}

using Turned = std::optional<std::string>;

/// "Grocery list: add tea", "on my list put socks", "shopping list + umbrella", "grocery list tea".
Turned listFirst(const std::string& text)
{
    static const Pattern adding(
        "^(?:(?:on|in|to(?![ -]?do\\b)|into|onto|for|under|at|update|edit|modify|change|go to) )?(" + anyList
            + ")[:,]? " + std::string(addingVerbs) + " (?:(?:to|on|in) (?:it|there) )?(.+)$",
        Pattern::caseless);
    static const Pattern removing(
        "^(?:(?:on|in|from|off|at|under) )?(" + anyList + ")[:,]? " + std::string(removingVerbs) + " (.+)$",
        Pattern::caseless);
    static const Pattern having("^(" + anyList
            + ") (?:should|must|needs? to|has to|ought to)(?: also| still)* "
              "(?:have|contain|include|hold|show|get) (.+?)(?: (?:in|on) it)?$",
        Pattern::caseless);
    static const Pattern deed(
        "^(" + anyList + ") (delete|remove|erase|clear|empty|read|show|open)$", Pattern::caseless);
    static const Pattern duty(
        "^(?:my |the )?to[ -]?do(?: list)?[:,]? (call|buy|pay|email|clean|wash|fix|book|pick up|send|"
        "write|return|renew|order|finish|visit) (.+)$",
        Pattern::caseless);
    if (const auto match = duty.find(text))
        return "add " + match->texts[0] + " " + match->texts[1] + " to my to do list";
    static const Pattern goods("^(" + anyList + ")[:,]? (.+)$", Pattern::caseless);
    static const Pattern bare("^(?:it|this|that|everything|list)$", Pattern::caseless);
    for (const Pattern* form : {&adding, &having})
        if (const auto match = form->find(text); match && namesList(match->texts[0]))
            return "add " + match->texts[1] + " to " + asList(match->texts[0]);
    if (const auto match = removing.find(text); match && namesList(match->texts[0]) && !bare.find(match->texts[1]))
        return "remove " + match->texts[1] + " from " + asList(match->texts[0]);
    if (const auto match = deed.find(text); match && namesList(match->texts[0]))
        return match->texts[1] + " " + asList(match->texts[0]);
    const auto match = goods.find(text);
    return match && namesList(match->texts[0]) && ItemWords::isGroceries(match->texts[1])
        ? Turned("add " + match->texts[1] + " to " + asList(match->texts[0]))
        : std::nullopt;
}

/// "Remove from shopping list eggs", "add tea grocery list", "tea from the list remove".
Turned listLast(const std::string& text)
{
    static const Pattern removing(
        "^" + std::string(removingVerbs) + " (?:from|off) (" + anyList + ")[:,]? (.+)$", Pattern::caseless);
    static const Pattern deedLast(
        "^(.+ (?:from|off|on|in|to) " + anyList + ") (delete|remove|erase|add)$", Pattern::caseless);
    static const Pattern noLink(
        "^((?:add|put) (.+?)) ((?:grocery|shopping|to[ -]?do|task) list|groceries|shopping)$", Pattern::caseless);
    static const Pattern linked(
        "(?:^| )(?:to|on|in|into|onto|from)(?: |$)|(?:^| )(?:my|the|our|an?|new|of|for|and|called|named|another)$",
        Pattern::caseless);
    static const Pattern following(
        "^(?:the )?following (?:items? |things? )?(?:(?:are|is|should|need|needs|to|be|must|have|has) )*"
        "(?:added|put|go) (?:to|on|onto|in) ("
            + anyList + ")[:,]? (.+)$",
        Pattern::caseless);
    static const Pattern theseTo(
        "^(?:add|put|include) (?:the )?(?:\\w+ ){1,3}(?:things?|items?|tasks?) (?:to|on|in|onto|into) (" + anyList
            + ")[:,]? (.+)$",
        Pattern::caseless);
    if (const auto match = removing.find(text); match && namesList(match->texts[0]))
        return "remove " + match->texts[1] + " from " + asList(match->texts[0]);
    if (const auto match = deedLast.find(text))
        return match->texts[1] + " " + match->texts[0];
    for (const Pattern* form : {&following, &theseTo})
        if (const auto match = form->find(text); match && namesList(match->texts[0]))
            return "add " + match->texts[1] + " to " + asList(match->texts[0]);
    const auto match = noLink.find(text);
    return match && !linked.find(match->texts[1]) ? Turned(match->texts[0] + " to " + asList(match->texts[2]))
                                                  : std::nullopt;
}

/// What an item is called besides: "renew the passport as a task", "the item called milk".
std::string withoutItemWords(const std::string& text)
{
    static const Pattern rank(
        " as (?:an?|the|my) (?:new )?(?:task|item|to[ -]?do|thing|entry)(?= (?:on|to|in) |$)", Pattern::caseless);
    static const Pattern called("\\b(?:the )?(?:item|word|product|entry|thing)(?: (?:called|named))? "
                                "(?=[a-z\"“'‘])(?!(?:on|from|to|in|off|of|number|that|which)\\b)",
        Pattern::caseless);
    static const Pattern removing("^(?:remove|delete|erase|take|scratch|cross|tick|check)\\b", Pattern::caseless);
    static const Pattern calledSo(
        "^(add|put|include) (?:an?|the|another|one|new| )*item (?:called|named) ", Pattern::caseless);
    std::string plain = rank.replaceAll(text, "");
    if (const auto match = calledSo.find(plain))
        plain = match->texts[0] + " " + plain.substr(match->range.end);
    return removing.find(plain) ? called.replaceAll(plain, "") : plain;
}

} // namespace

std::string ListWording::plain(std::string_view core)
{
    std::string text = withoutGerund(withPlainNames(withoutSideRemarks(withDutiesAsList(signsAndBlanks(core)))));
    if (text.size() > ListIntent::longestRead)
        return text;
    for (const auto turn : {listFirst, listLast})
        if (auto turned = turn(text)) {
            text = *std::move(turned);
            break;
        }
    return withoutItemWords(text);
}

} // namespace quorvell
