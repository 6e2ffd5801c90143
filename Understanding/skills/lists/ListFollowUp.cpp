// SPDX-License-Identifier: MIT
#include "Understanding/skills/lists/ListFollowUp.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "QuorvellCore/text/TextMatch.h"
#include "Understanding/skills/lists/ItemWords.h"
#include "Understanding/skills/lists/ListPhrase.h"
#include "Understanding/skills/lists/ListStatement.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

using Kind = ListIntent::Kind;
using Found = std::optional<ListIntent>;

const Pattern& topOfList()
{
    static const Pattern top("\\s+(?:(?:at|to|on|as) )(?:the )?(?:very )?(?:top|beginning|start|first "
                             "(?:place|item|thing))(?: of (?:it|that|the "
                             "list))?$",
        Pattern::caseless);
    return top;
}

std::string ofTop(const std::string& items)
{
    return topOfList().replaceAll(items, "");
}

ListIntent atTop(ListIntent intent, const std::string& said)
{
    intent.isFirst = topOfList().find(said).has_value();
    return intent;
}

bool isAboutOrder(const std::string& text)
{
    static const Pattern order(
        "^(?:sort|order|arrange|alphabeti[sz]e|reorder|re-order|rearrange|shuffle) (?:it|them|that|the list|that "
        "list|my "
        "list|everything|the items)\\b"
        "|^(?:move|bring|push) .+ (?:to|at) (?:the )?(?:top|bottom|beginning|start|end|first place)\\b",
        Pattern::caseless);
    return order.find(text).has_value();
}

/// "What's the first thing on it", "item 2": told, nothing else.
Found atPlace(const std::string& text)
{
    static const Pattern form("^(?:and )?(?:(?:what(?: is|['’]s| was)?|tell me|read(?: me)?|say) )?(.+?)"
                              "(?: (?:on|of|in) (?:it|there|(?:the|my|that) list))?$",
        Pattern::caseless);
    const auto match = form.find(text);
    const std::string place = match ? ItemWords::named(match->texts[0]) : std::string();
    return place.starts_with('#') ? Found(ListIntent{.kind = Kind::has, .items = {place}}) : std::nullopt;
}

} // namespace

std::optional<ListIntent> ListFollowUp::read(std::string_view core, const ListTalk& talk)
{
    const std::vector<std::string>& known = talk.items;
    const std::string text = ListPhrase::inOneLine(core);
    if (text.size() > ListIntent::longestRead)
        return std::nullopt;
    static const Pattern adding(
        "^(?:(?:and|also|oh|then|now|please|plus|can you|could you)[,]? )*(?:(?:add|put|include|write)(?: on| "
        "down)?|and|also|plus|we also need|i also need) (.+?)(?: back)?$",
        Pattern::caseless);
    static const Pattern loose(
        "(?:\\s+(?:on (?:it|there|that(?: list)?)|to (?:it|that(?: list)?|there)|too|as well|also|in it|on))+$",
        Pattern::caseless);
    static const Pattern removing(
        "^(?:(?:and|also|please|now) )*(?:remove|delete|take|erase|drop|scratch|strike|clear|get rid of)(?: off| out| "
        "away)? "
        "(.+?)(?: (?:off|from|out|out of|off of)(?: (?:it|there|that|again))?)?$",
        Pattern::caseless);
    static const Pattern ticked("^(?:(?:and|also|please|now|okay) )*(?:tick|check|cross|mark)(?: off)? (.+?)(?: "
                                "(?:off|as (?:done|bought|got|complete|finished)|done|off (?:it|the list)))?$",
        Pattern::caseless);
    static const Pattern unticked("^(?:untick|uncheck) (.+)$", Pattern::caseless);
    static const Pattern bought("^(?:i|we)(?:['’]ve| have)?(?: already| just)* (?:got|bought|have|picked "
                                "up|did|finished|done|packed) (?:the |my |our |some )?(.+?)(?: already)?$",
        Pattern::caseless);
    static const Pattern isOn("^(?:is|are|do i have|did i (?:put|add)|have i (?:got|put|added))(?: there)?(?: any)? "
                              "(.+?)(?: (?:already )?(?:on|in) (?:it|there|that list))$",
        Pattern::caseless);
    static const Pattern counting("^how (?:many|much)(?: (?:things?|items?|entries|of them|are|is|there|do i have|have "
                                  "i got|left|on it|on that|in it|still|open|that))*$"
                                  "|^how many (?:\\w+ ){1,2}(?:(?:are|do i have|have i got) )?(?:on|in) (?:it|there)$",
        Pattern::caseless);
    static const Pattern reading(
        "^(?:and )?(?:(?:read|show|tell|give|open|repeat|say)(?: me)? (?:it|that(?: list)?|them|what is on "
        "it|what['’]?s on "
        "it)(?: to me| out| aloud| again| now| back)*|what(?: else)?(?: is|['’]?s)(?: still| left| now| else)* on "
        "(?:it|that|there)(?: "
        "now| again)?|what(?:['’]?s| is| else is)(?: still)? (?:left|on it|missing|open|outstanding)(?: (?:on "
        "it|there|now|to "
        "(?:buy|get|do|pack|bring)))*"
        "|what (?:else )?(?:do|must|should) (?:i|we)(?: still| also)?(?: (?:need|have))?(?: to "
        "(?:buy|get|pack|do|bring|"
        "take))?(?: still)?)$",
        Pattern::caseless);
    static const Pattern deleting(
        "^(?:delete|remove|erase|throw away|get rid of) (?:it|that list|this list|the whole (?:thing|list)|the list)$",
        Pattern::caseless);
    static const Pattern clearing(
        "^(?:clear|empty|wipe) (?:it|that|that list|the list|everything)(?: out)?$", Pattern::caseless);
    static const Pattern naming(
        "^(?:re-?name (?:it|that)(?: list)?(?: to| as)?|call (?:it|that list)) (.+?)(?: instead)?$", Pattern::caseless);
    static const Pattern replacing(
        "^(?:change|replace|swap|make) (.+?) (?:to|with|for|by|into) (.+)$", Pattern::caseless);
    static const Pattern elsewhere(
        "\\b(?:calendar|diary|agenda|schedule|reminders?|alarms?|timers?|notes?|notebook|events?|meetings?|mtgs?|"
        "appointments?|appts?|tomorrow|today|tonight|at "
        "\\d|(?:mon|tues?|wed(?:nes)?|thu(?:rs)?|fri|sat(?:ur)?|sun)(?:day)?|volume|light|lights|o['’]clock|\\d "
        "?[ap]m)\\b",
        Pattern::caseless);
    const auto isKnown = [&](const std::string& item) {
        const std::string words = " " + TextMatch::normalized(item) + " ";
        return item.starts_with('#') || std::ranges::any_of(known, [&](const std::string& one) {
            return (" " + TextMatch::normalized(one) + " ").find(words) != std::string::npos;
        });
    };
    const auto ofKnown = [&](Kind kind, const std::string& items) -> Found {
        auto intent = ListIntent::ofItems(kind, "", items);
        static const Pattern takenBack("^(?:scratch|strike) (?:it|that|this)$", Pattern::caseless); // what was said
        const bool isPointing =
            ItemWords::isPointing(items) && (kind == Kind::remove || kind == Kind::tick) && !takenBack.find(text);
        const bool isAll = intent.items.empty() && (intent.kind == Kind::clear || intent.kind == Kind::clearTicked);
        const bool isNamed = std::ranges::any_of(intent.items, isKnown);
        return isAll || isPointing || isNamed ? Found(std::move(intent)) : std::nullopt;
    };
    static const Pattern needed(
        "^(?:do|did) (?:i|we) (?:still )?(?:need|want)(?: to (?:buy|get|pack|bring))?(?: any| some)? (.+)$",
        Pattern::caseless);
    if (isAboutOrder(text))
        return ListIntent{.kind = Kind::sort};
    if (auto intent = atPlace(text))
        return intent;
    if (const auto match = needed.find(text); match && ListStatement::isGoods(match->texts[0]))
        return ListIntent::ofItems(Kind::has, "", match->texts[0]);
    if (deleting.find(text))
        return ListIntent{.kind = Kind::deleteList};
    if (clearing.find(text))
        return ListIntent{.kind = Kind::clear};
    if (counting.find(text))
        return ListIntent{.kind = Kind::count};
    if (reading.find(text))
        return ListIntent{.kind = Kind::show};
    if (const auto match = naming.find(text))
        return ListIntent{.kind = Kind::rename, .title = ListPhrase::withoutEnds(match->texts[0])};
    if (const auto match = isOn.find(text))
        return ListIntent::ofItems(Kind::has, "", match->texts[0]);
    if (elsewhere.find(text))
        return std::nullopt;
    if (const auto match = unticked.find(text))
        return ofKnown(Kind::untick, match->texts[0]);
    static const Pattern again("^the .*\\bagain$", Pattern::caseless);
    if (const auto match = ticked.find(text)) // the tool tells where it is not on the list
        return again.find(match->texts[0]) ? Found(ListIntent{.kind = Kind::tick})
                                           : ListIntent::ofItems(Kind::tick, "", match->texts[0]);
    if (const auto match = removing.find(text))
        return ofKnown(Kind::remove, match->texts[0]);
    if (const auto match = bought.find(text))
        return ofKnown(Kind::tick, match->texts[0]);
    if (const auto match = replacing.find(text)) {
        auto intent = ofKnown(Kind::replace, match->texts[0]);
        if (intent)
            intent->items = {intent->items.front(), ItemWords::one(ListPhrase::withoutEnds(match->texts[1]))};
        return intent;
    }
    if (const auto match = adding.find(text)) {
        const std::string items = loose.replaceAll(match->texts[0], "");
        static const Pattern request(
            "^(?:then |please "
            ")*(?:what|when|where|who|how|why|is|are|do|does|did|can|could|remind|set|tell|read|show|delete|remove|"
            "cancel|move|call|text|send|play|open|make|create|find|note|remember|in|at|on|the "
            "(?:next|other)|i|you|he|she|they|it|that|this|then|no|yes|thanks?|one more thing)\\b",
            Pattern::caseless);
        static const Pattern pointing(
            "^(?:what|when|where|who|how|why|i|you|he|she|they|it|that|this|them|then|in|at|on)\\b", Pattern::caseless);
        static const Pattern says(
            "^(?:(?:and|also|oh|then|now|please|plus|can you|could you)[,]? )*(?:add|include)\\b", Pattern::caseless);
        // Behind "add" stands what is to be added, be it a duty.
        if (!(says.find(text) ? pointing : request).find(items) && !items.empty())
            return atTop(ListIntent::ofItems(Kind::add, "", ofTop(items)), items);
    }
    return std::nullopt;
}

std::optional<ListFollowUp::Dictated> ListFollowUp::readDictated(std::string_view core, const ListTalk& talk)
{
    static const Pattern request(
        "^(?:what|which|when|where|who|whose|how|why|is|are|was|do|does|did|can|could|will|would|should|shall|may|may "
        "be"
        "|maybe|if|remind|set|tell|read|show|list|delete|remove|cancel|move|play|turn|switch|open|close|make|create|"
        "find|"
        "note|remember|forget|undo|stop|start|search|put|add|write|rename|i|i['’]m|i['’]d|i['’]ll|you|he|she|they|we|"
        "it|"
        "it['’]s|that|that['’]s|this|there|then|no|not|yes|yeah|okay|ok|thanks?|hello|hi|hey|good|great|nice|cool|"
        "sorry|"
        "never|wait|let|let['’]s|actually|oh|well|please|in|at|on|to|for|from|by|of|with|because|my name)\\b",
        Pattern::caseless);
    static const Pattern sentence(
        "\\b(?:is|are|was|were|i|you|he|she|they|it|that|do|does|did|tomorrow|today|tonight|at \\d+|"
        "(?:mon|tues|wednes|thurs|fri|satur|sun)days?|calendar|reminder|alarm|timer|morning|afternoon|evening|night|"
        "noon|"
        "midnight|am|pm|o['’]?clock|hours?|minutes?)\\b|[?]|\\d:\\d",
        Pattern::caseless);
    static const Pattern lead("^(?:(?:and|also|plus|oh)[,]? )+", Pattern::caseless);
    static const Pattern number("^\\W*\\d*\\W*$");
    const std::string said = ListPhrase::inOneLine(core);
    const std::string text = lead.replaceAll(said, "");
    if (text.empty() || text.size() > ListIntent::longestRead || request.find(text) || sentence.find(text))
        return std::nullopt;
    Dictated dictated{.intent = ListIntent::ofItems(Kind::add, "", text)};
    const auto& items = dictated.intent.items;
    constexpr std::ptrdiff_t mostBlanks = 5; ///< Of one thing.
    const bool areShort = std::ranges::all_of(items,
        [](const std::string& item) { return std::ranges::count(item, ' ') <= mostBlanks && !number.find(item); });
    if (items.empty() || dictated.intent.kind != Kind::add || !areShort)
        return std::nullopt;
    const bool areGroceries = std::ranges::all_of(items, ItemWords::isGroceries);
    if (!areGroceries && !talk.isNew)
        return std::nullopt;
    dictated.isSure = areGroceries || items.size() > 1 || text != said;
    return dictated;
}

} // namespace quorvell
