// SPDX-License-Identifier: MIT
#include "Understanding/skills/lists/ListIntent.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/lists/ItemWords.h"

#include <utility>

namespace quorvell {

ListIntent ListIntent::ofItems(Kind kind, std::string list, const std::string& said)
{
    static const Pattern particle("\\s+(?:off|out|down|away|back)$", Pattern::caseless);
    static const Pattern oncemore("\\s+again$", Pattern::caseless);
    static const Pattern noun("^(?!(?:the |an? )?\\w+$)(.+) (?:item|task)$", Pattern::caseless);
    const bool adds = kind == Kind::add || kind == Kind::create;
    static const Pattern rank(
        " as (?:(?:the |my |its )?(?:first|only|next|last)|an?)(?: (?:new )?(?:thing|item|task|entry|one))?$",
        Pattern::caseless);
    std::string items = oncemore.replaceAll(particle.replaceAll(said, ""), "");
    static const Pattern all(
        "^all (?:of )?(?:the |my |our )?(?=\\S)(?!(?:but|except|items?|things?|stuff)\\b)", Pattern::caseless);
    items = (adds ? rank : all).replaceAll(items, "");
    // "The birthday card item", and not "the last item".
    const auto named = adds || ItemWords::named(items).starts_with('#') || ItemWords::isPointing(items)
        ? std::nullopt
        : noun.find(items);
    if (named)
        items = named->texts[0];
    ListIntent intent{.kind = kind, .list = std::move(list)};
    // "All food items with the prefix dry": things are taken off by their names.
    static const Pattern described(
        "\\b(?:items?|things?|everything|entries|ones|anything|foods?)\\b.*\\b(?:with|starting|"
        "beginning|that|which|prefix|containing|of type)\\b"
        "|^(?:all|everything|anything)(?: \\w+)? (?:but|except|besides|apart from)\\b",
        Pattern::caseless);
    if ((kind == Kind::remove || kind == Kind::clear) && ItemWords::isEverything(items))
        intent.kind = Kind::clear;
    else if (kind == Kind::remove && ItemWords::isTicked(items))
        intent.kind = Kind::clearTicked;
    else if (kind == Kind::remove && described.find(items))
        return intent;
    else if (ItemWords::isPointing(items))
        intent.isOfLast = ItemWords::isDefinite(items);
    else
        intent.items = adds ? ItemWords::split(items) : ItemWords::namedAll(items);
    return intent;
}

} // namespace quorvell
