// SPDX-License-Identifier: MIT
#include "Understanding/skills/lists/ListReader.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/lists/ListChange.h"
#include "Understanding/skills/lists/ListPhrase.h"
#include "Understanding/skills/lists/ListQuestion.h"
#include "Understanding/skills/lists/ListWording.h"
#include "Understanding/words/RequestText.h"

#include <string>
#include <utility>

namespace quorvell {

namespace {

using Kind = ListIntent::Kind;

/// "Bring up the grocery list and add milk", "make a packing list and put socks on it".
std::optional<ListIntent> twoInOne(const std::string& text)
{
    static const Pattern both("^(.+?\\b" + ListPhrase::listWord
            + "\\b[^,]*?),? (?:and|then|and then) (add|put|include|write|remove|delete|take|tick|check)(?: off)? (.+)$",
        Pattern::caseless);
    static const Pattern loose(
        "(?:\\s+(?:on|to|in|into|onto|off|from|in to)(?: (?:it|there|that|that list|the list|this list))?)$",
        Pattern::caseless);
    const auto match = both.find(text);
    if (!match)
        return std::nullopt;
    auto first = ListChange::read(match->texts[0]);
    if (!first)
        first = ListQuestion::read(match->texts[0]);
    if (!first || !first->items.empty())
        return std::nullopt;
    const std::string verb = RequestText::phrase(match->texts[1]);
    const std::string items = loose.replaceAll(match->texts[2], "");
    const bool adds = verb == "add" || verb == "put" || verb == "include" || verb == "write";
    const Kind kind = !adds           ? (verb == "tick" || verb == "check" ? Kind::tick : Kind::remove)
        : first->kind == Kind::create ? Kind::create
                                      : Kind::add;
    return ListIntent::ofItems(kind, first->list, items);
}

/// "Bananas on the grocery list and" of what stood before "on the shopping list": to which one is asked.
void takeSeveral(ListIntent& intent)
{
    static const Pattern both("^(.+?) (?:to|on|onto|in) (?:.+?\\b)?(?:" + ListPhrase::listWord
            + "|groceries|errands|chores)" + "(?:,? and)?$",
        Pattern::caseless);
    const auto match =
        intent.kind == Kind::add && !intent.items.empty() ? both.find(intent.items.back()) : std::nullopt;
    if (!match)
        return;
    intent.items.back() = match->texts[0];
    intent.isOfSeveral = true;
}

} // namespace

std::optional<ListIntent> ListReader::read(std::string_view core)
{
    static const Pattern hint(
        "list|lsit|lst\\b|lits\\b|\\bto[ -]?dos?\\b|\\btasks?\\b|grocer|errands|chores|\\bmy "
        "shopping\\b|\\bbuy\\b|\\bpack$|\\bdo (?:i|we) (?:still )?need\\b|\\b(?:remove|delete|take|erase|kill) .+ "
        "from\\b|\\bitems?(?: \\d+)?$|\\b(?:remove|delete|take off) .+ and (?:add|put) "
        "|\\bjobs\\b|\\bshopping$|\\b(?:what|everything|things) .*\\b(?:bought|purchased|ticked(?: off)?|checked "
        "off)$|\\b(?:everything|all) (?:but|except)|\\b(?:things|have i got|must i|should i|have to|need "
        "to|left) (?:i have )?to "
        "do\\b|\\b(?:did|have) (?:i|we) (?:already )?(?:add|put)|^shopping:|\\b(?:store|shops?|supermarket|market)(?: "
        "today| now| tomorrow)?$",
        Pattern::caseless);
    static const Pattern notOurs(
        "^(?:remind|remember|schedule|book|play|call me|text|e-?mail|google)\\b|\\bplaylist\\b", Pattern::caseless);
    static const Pattern hurried(
        "^(?:(?:pls|plz|can u|could u|would u|would u pls|can you pls|(?:should|shall) (?:i|we)"
        "|(?:do not|don['’]?t) forget to(?= (?:add|put))|remember to(?= (?:add|put))|i forgot to(?= "
        "(?:add|put)))[,]?\\s+)+",
        Pattern::caseless);
    // What is denied is read all the same, and then not done: see CarefulStep.
    static const Pattern denied(
        "^(?:do not|don['’]?t|never) (?=(?:add|put|create|make|delete|remove|change)\\b)", Pattern::caseless);
    static const Pattern place(
        "\\b(?:at|on|to|onto|in) the (?:very )?(?:(top|beginning|start|head)|bottom|end) of (?=.*\\blist)",
        Pattern::caseless);
    static const Pattern order("^(?:sort|alphabeti[sz]e|reorder|re-order|rearrange|arrange|shuffle|organi[sz]e|reverse|"
                               "prioriti[sz]e|number) (.+?)(?: alphabetically| by .+)?$",
        Pattern::caseless);
    // "I have no money for it, can you remove it from my wish list?"
    static const Pattern reason("^[^?]{3,200}?[,.;] (?:so |and |please )*(?:can|could|would|will) you (?:please )?"
                                "(?=(?:add|put|remove|delete|take|tick|cross|create|make)\\b)",
        Pattern::caseless);
    const std::string said =
        denied.replaceAll(hurried.replaceAll(reason.replaceAll(ListWording::plain(core), ""), ""), "");
    static const Pattern bare("^((?:add|put) .+) (?:to|on) (?:the |my )?shopping$", Pattern::caseless);
    const auto shopping = bare.find(said);
    const std::string text = shopping ? shopping->texts[0] + " to the shopping list" : place.replaceAll(said, "on ");
    if (text.size() > ListIntent::longestRead || !hint.find(text) || notOurs.find(text))
        return std::nullopt;
    if (const auto match = order.find(text); match && ListPhrase::nameIn(match->texts[0]))
        return ListIntent{.kind = Kind::sort};
    for (const auto reader : {ListQuestion::readLists, twoInOne, ListChange::read, ListQuestion::read}) {
        auto intent = reader(text);
        if (!intent)
            continue;
        takeSeveral(*intent);
        const auto where = place.find(said);
        intent->isFirst = intent->kind == Kind::add && where && !where->texts[0].empty();
        return intent;
    }
    return std::nullopt;
}

} // namespace quorvell
