// SPDX-License-Identifier: MIT
#include "Understanding/skills/lists/ListStatement.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/lists/ItemWords.h"
#include "Understanding/skills/lists/ListPhrase.h"
#include "Understanding/words/RequestText.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

using Kind = ListIntent::Kind;
using FoundStatement = std::optional<ListIntent>;

/// What goes onto the shopping list.
FoundStatement ofWanted(const Pattern& form, std::string_view core)
{
    const std::string text = ListPhrase::inOneLine(core);
    const auto match = text.size() <= ListIntent::longestRead ? form.find(text) : std::nullopt;
    if (!match)
        return std::nullopt;
    const auto said = std::ranges::find_if(match->texts, [](const std::string& words) { return !words.empty(); });
    const std::string goods = said != match->texts.end() ? *said : std::string();
    return ListStatement::isGoods(goods) ? FoundStatement(ListIntent::ofItems(Kind::add, "shopping", goods))
                                         : std::nullopt;
}

} // namespace

bool ListStatement::isGoods(const std::string& words)
{
    static const Pattern others(
        "^(?:an?|one) "
        "|\\b(?:to|you|help|him|her|them|it|that|this|know|time|sleep|break|rest|money|advice|love|idea|is|are|be|at|"
        "by|"
        "tomorrow|today|tonight|your|amazon|ebay|online|internet|taxi|cab|flight|tickets?|uber|car|house|lights?|music|"
        "answer)\\b|\\d:\\d",
        Pattern::caseless);
    constexpr std::ptrdiff_t mostBlanks = 12;
    return !others.find(words) && std::ranges::count(words, ' ') <= mostBlanks;
}

std::optional<ListIntent> ListStatement::readLack(std::string_view core)
{
    static const Pattern lacking("^(?:(?:we|i)(?:['’](?:re|m|ve)| are| am| have)? )?(?:(?:nearly |almost |all |just "
                                 ")*(?:out of|(?:run|ran|running) "
                                 "(?:low|out)(?: on| of)|low on)|have no(?: more)?|need(?: to (?:buy|get|pick up))?(?: "
                                 "some)? more) (?:the )?(.+?)(?: again| soon)?$",
        Pattern::caseless);
    return ofWanted(lacking, core);
}

std::optional<ListIntent> ListStatement::readSpared(std::string_view core)
{
    static const Pattern form(
        "^(?:there is )?no (?:more )?need (?:for|of|to (?:buy|get))(?: the| any)? (.+?)(?: any ?more| now)?$"
        "|^(?:(?:i|we) )?(?:do not|don['’]?t) (?:need|want|require)(?: to (?:buy|get))?(?: the| any)? (.+?)(?: any "
        "?more| now)?$"
        "|^(?:i|we)(?: already)?(?: have|['’]ve)(?: already)?(?: got)?(?: enough| plenty of| some| already)* (.+?)(?: "
        "already| at home| left)*$"
        "|^(?:skip|forget(?: about)?|cancel|never mind)(?: the)? (.+)$"
        "|^(?:the )?(.+?) (?:is|are) (?:not|no longer) needed(?: any ?more)?$",
        Pattern::caseless);
    const std::string text = ListPhrase::inOneLine(core);
    const auto match = text.size() <= ListIntent::longestRead ? form.find(text) : std::nullopt;
    if (!match)
        return std::nullopt;
    const auto said = std::ranges::find_if(match->texts, [](const std::string& words) { return !words.empty(); });
    return said != match->texts.end() && ItemWords::isGroceries(*said)
        ? FoundStatement(ListIntent::ofItems(Kind::remove, "", *said))
        : std::nullopt;
}

std::optional<ListIntent> ListStatement::readStatement(std::string_view core)
{
    const std::string text = ListPhrase::inOneLine(core);
    static const Pattern wanting(
        "^(?:(?:we|i) )?(?:also |really )*need(?: to (?:buy|get|pick up))?(?: some)? (.+)$|^buy(?: some)? (.+)$"
        "|^make sure (?:to|i|we) (?:get|buy)(?: some)? (.+?)(?: next time.*| when .*)?$",
        Pattern::caseless);
    static const Pattern bought(
        "^(?:(?:i|we)(?:['’]ve| have)?(?: already| just)* )?(?:got|bought|picked up) (?:the|our|my) (.+)$",
        Pattern::caseless);
    static const Pattern itemGone(
        "^(?:this|that|the|these|those)(?: last)? (?:items?|one|ones|entry) (?:should|must|needs? to|has to|"
        "can) (?:be )?(?:removed|deleted|taken off|erased|go|gone)$",
        Pattern::caseless);
    if (itemGone.find(text))
        return ListIntent{.kind = Kind::remove};
    static const Pattern itemOnly(
        "^(?:add|include|insert|put in|remove|delete|kill|erase|tick)(?: off)? (?:an? |the |this |that |another "
        ")?(?:(?:new|more|last) )*(?:items?|one|tasks?|to[ -]?dos?)(?: (?:also|too|as well))?$",
        Pattern::caseless);
    static const Pattern adds("^(?:add|include|insert|put)", Pattern::caseless);
    static const Pattern ticks("^tick", Pattern::caseless);
    if (text.size() > ListIntent::longestRead)
        return std::nullopt;
    // "Take the milk off", "uncheck eggs", "change eggs to a dozen eggs": of the list that holds it.
    static const Pattern off("^(?:take|cut|strike|scratch|get) (.+?) (?:off|out)(?: again)?$", Pattern::caseless);
    static const Pattern offFirst(
        "^(?:take off|take out|leave out|discard|omit|take) (.+?)(?: away)?$", Pattern::caseless);
    static const Pattern gone(
        "^(?:the )?(.+?) (?:should|must|needs? to|has to|have to|can) (?:be )?(?:removed|deleted|taken off|erased|go)$",
        Pattern::caseless);
    static const Pattern deedLast("^(?:the )?(.+?)[,]? (delete|remove|add|erase)$", Pattern::caseless);
    for (const Pattern* form : {&offFirst, &gone, &deedLast})
        if (const auto match = form->find(text); match && ItemWords::isGroceries(match->texts[0])) {
            const bool isAddition = match->texts.size() > 1 && RequestText::phrase(match->texts[1]) == "add";
            return ListIntent::ofItems(isAddition ? Kind::add : Kind::remove, "", match->texts[0]);
        }
    static const Pattern open("^(?:untick|uncheck|unmark|un-?check) (.+)$", Pattern::caseless);
    static const Pattern swap(
        "^(?:change|replace|swap|edit|rename|update|correct|exchange|substitute) (.+?) (?:to|with|for|into) (.+)$",
        Pattern::caseless);
    if (const auto match = off.find(text))
        return ListIntent::ofItems(Kind::remove, "", match->texts[0]);
    if (const auto match = open.find(text))
        return ListIntent::ofItems(Kind::untick, "", match->texts[0]);
    static const Pattern bare("^(?:already )?(?:got|bought|picked up|purchased) (?:the |some )?(.+)$"
                              "|^(?:the )?(.+?)(?: (?:is|are|was))?(?: already)? (?:done|bought|purchased)$",
        Pattern::caseless);
    static const Pattern getting("^(?:get|grab|purchase|pick up) (?:some |more )?(.+)$", Pattern::caseless);
    if (const auto match = bare.find(text); match && ItemWords::isGroceries(match->texts[0] + match->texts[1]))
        return ListIntent::ofItems(Kind::tick, "", match->texts[0] + match->texts[1]);
    if (const auto match = getting.find(text); match && ItemWords::isGroceries(match->texts[0]))
        return ListIntent::ofItems(Kind::add, "shopping", match->texts[0]);
    // What else can be changed into something is no matter of lists.
    static const Pattern deed(
        "^(?:call|pay|clean|buy|wash|fix|book|visit|email|return|order|pick up|send|water)\\b", Pattern::caseless);
    if (const auto change = swap.find(text)) {
        const std::string old = ItemWords::named(change->texts[0]);
        if (old.starts_with('#') || (deed.find(old) && deed.find(change->texts[1])))
            return ListIntent{.kind = Kind::replace, .items = {old, ItemWords::named(change->texts[1])}};
    }
    if (const auto match = swap.find(text); match && ItemWords::isGroceries(match->texts[0]))
        return ListIntent{
            .kind = Kind::replace, .items = {ItemWords::named(match->texts[0]), ItemWords::named(match->texts[1])}};
    // "Add tea to the menu": a list may be called so.
    static const Pattern onto(
        "^(?:please )?(?:add|put|include|insert|write(?: down)?|note(?: down)?|enter|save|place) (.+?) "
        "(?:to|in|into|onto|on|under) (?:(?:the|my|our) )?((?:[\\p{L}'’]+ ){0,3}[\\p{L}'’]+)$",
        Pattern::caseless);
    static const Pattern cart("^(?:shopping |grocery )?(?:cart|basket|trolley|bag)$", Pattern::caseless);
    static const Pattern noName(
        "\\b(?:\\w+day|tomorrow|tonight|weekend|week|month|year|morning|noon|afternoon|evening|night|january|february|"
        "march|"
        "april|may|june|july|august|september|october|november|december|there|here|it|them|that|this|me|him|her|mind|"
        "top|"
        "bottom|end|start|front|back|phone|computer|screen|bulk|time|advance|total|order|case|general|lists?)\\b",
        Pattern::caseless);
    if (const auto match = onto.find(text); match && !noName.find(match->texts[1])
        && !ListPhrase::isKeptElsewhere(match->texts[1]) && !ListPhrase::isSentence(match->texts[1])
        && !ListPhrase::isKeptElsewhere(match->texts[0]))
        return ListIntent::ofItems(
            Kind::add, cart.find(match->texts[1]) ? "shopping" : match->texts[1], match->texts[0]);
    static const Pattern added(
        "^(?:please )?(?:add|also add)(?: some| one more| another| more| an?| the)* (?!to\\b|on\\b|in\\b|an? "
        "(?:new|another)\\b)(.+?)(?: too| as "
        "well)?$",
        Pattern::caseless);
    static const Pattern notGoods(
        "\\b(?:event|meeting|appointment|reminder|alarm|timer|note|calendar|contact|task|list|lists|every|weekly|daily|"
        "minutes?|hours?|me|us|him|her|with|from|for)\\b|\\d\\d",
        Pattern::caseless);
    static const Pattern duty("\\b(?:tasks?|to[ -]?dos?)\\b", Pattern::caseless);
    if (itemOnly.find(text) && adds.find(text) && duty.find(text))
        return ListIntent{.kind = Kind::add, .list = "to do"};
    if (itemOnly.find(text))
        return ListIntent{.kind = adds.find(text) ? Kind::add : ticks.find(text) ? Kind::tick : Kind::remove};
    if (auto intent = ofWanted(wanting, text))
        return intent;
    if (const auto match = added.find(text); match && isGoods(match->texts[0]) && !notGoods.find(match->texts[0]))
        return ListIntent::ofItems(Kind::add, "", match->texts[0]);
    if (const auto match = bought.find(text); match && isGoods(match->texts[0]))
        return ListIntent::ofItems(Kind::tick, "", match->texts[0]);
    return std::nullopt;
}

} // namespace quorvell
