// SPDX-License-Identifier: MIT
#include "Understanding/skills/lists/ListShift.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/lists/ItemWords.h"
#include "Understanding/skills/lists/ListPhrase.h"

#include <utility>

namespace quorvell {

namespace {

using Kind = ListIntent::Kind;
using Found = std::optional<ListIntent>;

/// A list by its name, with or without the word: "shopping".
std::optional<std::string> listNamed(const std::string& phrase)
{
    static const Pattern known(
        "^(?:shopping|groceries|grocery|to[ -]?dos?|todo|tasks|errands|chores)$", Pattern::caseless);
    auto name = ListPhrase::nameIn(phrase);
    return name || !known.find(phrase) ? name : std::optional(phrase);
}

/// Nothing named is "my list".
std::optional<std::string> listOrNone(const std::string& phrase)
{
    return phrase.empty() ? std::optional<std::string>("") : listNamed(phrase);
}

Found moved(const std::string& text)
{
    static const Pattern form("^(?:move|transfer|shift|switch)(?: over)? (.+?)(?: (?:from|off|out of) (.+?))? "
                              "(?:over )?(?:to|into|onto|in) (?!the (?:top|bottom|end|start)\\b)(.+)$",
        Pattern::caseless);
    static const Pattern both("^(?:add|put) (.+?) (?:to|on|in) (.+?),? and (?:then )?(?:remove|delete|take) (?:it "
                              "|them |that )?(?:from|off) (.+)$",
        Pattern::caseless);
    if (const auto match = both.find(text))
        return moved("move " + match->texts[0] + " from " + match->texts[2] + " to " + match->texts[1]);
    const auto match = form.find(text);
    const auto from = match ? listOrNone(match->texts[1]) : std::nullopt;
    const auto onto = match ? listNamed(match->texts[2]) : std::nullopt;
    if (!from || !onto || onto->empty())
        return std::nullopt;
    ListIntent intent = ListIntent::ofItems(Kind::remove, *from, match->texts[0]);
    if (intent.kind == Kind::clear)
        intent.items = {"#all"};
    intent.kind = Kind::move;
    intent.title = *onto;
    return intent.items.empty() ? std::nullopt : Found(std::move(intent));
}

Found swapped(const std::string& text)
{
    static const Pattern form("^(?:remove|delete|take(?: off| out)?|erase) (.+?)(?: (?:from|off)(?: of)? (.+?))?"
                              "(?:,? and (?:then )?|, (?:then )?)(?:also )?(?:add|put|replace (?:it|them) (?:with|by)) "
                              "(.+?)(?: (?:to|on|onto|in) (.+))?$",
        Pattern::caseless);
    static const Pattern it("^(?:it|there|that|that list|the same list)$", Pattern::caseless);
    static const Pattern addFirst(
        "^(?:add|put) (.+?)(?:,? and (?:then )?|, (?:then )?)(?:remove|delete|take(?: off| out)?|erase) (.+?) "
        "(?:(?:from|off|on|in|to)(?: of)?) (.+)$",
        Pattern::caseless);
    const auto match = form.find(text);
    if (const auto other = match ? std::nullopt : addFirst.find(text)) {
        const auto name = listNamed(other->texts[2]);
        ListIntent intent = ListIntent::ofItems(Kind::remove, name.value_or(""), other->texts[1]);
        intent.added = ItemWords::split(other->texts[0]);
        return name && !intent.items.empty() && !intent.added.empty() ? Found(std::move(intent)) : std::nullopt;
    }
    if (!match)
        return std::nullopt;
    const auto from = listOrNone(match->texts[1]);
    const auto onto = listOrNone(it.replaceAll(match->texts[3], ""));
    if (!from || !onto || (!from->empty() && !onto->empty() && *from != *onto))
        return std::nullopt;
    ListIntent intent = ListIntent::ofItems(Kind::remove, from->empty() ? *onto : *from, match->texts[0]);
    intent.added = ItemWords::split(match->texts[2]);
    const bool isClear = intent.kind == Kind::remove && !intent.items.empty() && !intent.added.empty();
    return isClear ? Found(std::move(intent)) : std::nullopt;
}

Found allBut(const std::string& text)
{
    static const Pattern all("^(?:remove|delete|clear|erase|take(?: off)?|wipe)(?: off| out)? "
                             "(?:everything|anything|every item|all(?:(?: of)?(?: the| my)? (?:items?|things|else))?)"
                             "(?: (?:from|on|off|in) (.+?\\b"
            + ListPhrase::listWord + "))? (?:but|except(?: for)?|besides|apart from|other than)(?: the)? (.+?)"
            + "(?: (?:from|on|off|in) (.+))?$",
        Pattern::caseless);
    static const Pattern only(
        "^(?:(?:keep|leave) (?:only|just|nothing but)|(?:only|just) keep)(?: the)? (.+?) (?:on|in) (.+)$",
        Pattern::caseless);
    const auto match = all.find(text);
    const auto kept = match ? std::nullopt : only.find(text);
    if (!match && !kept)
        return std::nullopt;
    const std::string list = match ? match->texts[0] + match->texts[2] : kept->texts[1];
    const std::string said = match ? match->texts[1] : kept->texts[0];
    // Without a list it may be about anything, unless it is groceries.
    const auto name = !list.empty()    ? listNamed(list)
        : ItemWords::isGroceries(said) ? std::optional<std::string>("")
                                       : std::nullopt;
    auto items = ItemWords::namedAll(said);
    return name ? Found(ListIntent{.kind = Kind::keepOnly, .list = *name, .items = std::move(items)}) : std::nullopt;
}

} // namespace

std::optional<ListIntent> ListShift::read(const std::string& text)
{
    for (const auto reader : {allBut, moved, swapped})
        if (auto intent = reader(text))
            return intent;
    return std::nullopt;
}

} // namespace quorvell
