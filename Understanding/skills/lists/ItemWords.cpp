// SPDX-License-Identifier: MIT
#include "Understanding/skills/lists/ItemWords.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/words/RequestText.h"
#include "Understanding/words/RequestWords.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quorvell {

namespace {

using Items = std::vector<std::string>;
using Pair = std::pair<std::string_view, std::string_view>;

template <std::size_t count> bool isAmong(const std::array<std::string_view, count>& table, std::string_view word)
{
    return std::ranges::find(table, word) != table.end();
}

std::string withoutLead(const std::string& item)
{
    static const Pattern lead("^(?:(?:and|also|plus|then|both|to(?= [a-z])|the following(?: items?)?|the items?|(?:new "
                              ")?items?(?= [\\w\"“'‘])|(?:new "
                              ")?tasks?(?= \\w)(?: to)?|some(?: "
                              "more)?|more|any|the(?! \\S+ (?:of|and) the )|an?(?! "
                              "(?:dozen|couple|few|pair|bit|lot|half|quarter|\\w+ of)\\b)|my)\\b"
                              "[:,]?\\s+)+(?=\\S)",
        Pattern::caseless);
    static const Pattern tail("[\\s,;.!?]+(?:too|as well|also|please|for me)?[\\s,;.!?]*$", Pattern::caseless);
    const std::string text = trimmed(lead.replaceAll(trimmed(item, ",;:"), ""), "\"“”'‘’ ,;:");
    return tail.replaceAll(text + " ", "");
}

/// What begins with one is a duty rather than a thing.
bool isVerb(std::string_view word)
{
    constexpr std::array<std::string_view, 76> table{"post", "order", "check", "charge", "empty", "sweep", "mop",
        "dust", "sell", "sign", "plan", "find", "study", "submit", "file", "contact", "arrange", "organise", "organize",
        "replace", "install", "trim", "pack", "unpack", "wrap", "cancel", "schedule", "practice", "apply", "vote",
        "call", "ring", "phone", "email", "write", "send", "pay", "wash", "clean", "iron", "fold", "pick", "drop",
        "fetch", "collect", "take", "bring", "return", "fix", "repair", "mow", "water", "feed", "walk", "book", "visit",
        "see", "meet", "ask", "tell", "text", "finish", "prepare", "cook", "bake", "paint", "tidy", "vacuum", "do",
        "make", "get", "buy", "go", "read", "change", "renew"};
    return isAmong(table, word);
}

/// Things that are one although "and" stands between their words.
bool isOneThing(std::string_view left, std::string_view right)
{
    constexpr auto table = std::to_array<Pair>(
        {{"salt", "pepper"}, {"mac", "cheese"}, {"macaroni", "cheese"}, {"fish", "chips"}, {"ham", "cheese"},
            {"ham", "eggs"}, {"bacon", "eggs"}, {"butter", "jelly"}, {"gin", "tonic"}, {"rum", "coke"},
            {"half", "half"}, {"oil", "vinegar"}, {"salt", "vinegar"}, {"sweet", "sour"}, {"cookies", "cream"},
            {"strawberries", "cream"}, {"peaches", "cream"}, {"bangers", "mash"}, {"beans", "rice"}, {"rice", "beans"},
            {"rice", "peas"}, {"head", "shoulders"}, {"ben", "jerry's"}, {"m", "m's"}, {"m", "ms"}, {"black", "white"},
            {"surf", "turf"}, {"pros", "cons"}, {"washer", "dryer"}, {"cream", "onion"}, {"cheese", "onion"},
            {"bed", "breakfast"}, {"bits", "pieces"}, {"nuts", "bolts"}, {"knife", "fork"}, {"needle", "thread"},
            {"lost", "found"}, {"show", "tell"}, {"arts", "crafts"}, {"mum", "dad"}, {"mom", "dad"}, {"oats", "honey"},
            {"pork", "beans"}, {"biscuits", "gravy"}, {"chicken", "waffles"}, {"lemon", "lime"}, {"romeo", "juliet"}});
    return std::ranges::find(table, Pair(left, right)) != table.end();
}

/// Said of the thing behind them: "red and green peppers".
bool isAdjective(std::string_view word)
{
    constexpr std::array<std::string_view, 24> table{"red", "green", "yellow", "blue", "black", "white", "brown",
        "orange", "pink", "big", "small", "large", "little", "fresh", "frozen", "dried", "hot", "cold", "sweet",
        "salted", "plain", "dark", "light", "old"};
    return isAmong(table, word);
}

bool isGrocery(std::string_view word);

/// Whether "and" stands between two things of a list.
bool separates(const RequestWords& words, std::size_t start, std::size_t place)
{
    const std::string_view left = words.at(place - 1);
    const std::string_view right = words.at(place + 1);
    const bool isAmount = right == "a" && (words.at(place + 2) == "half" || words.at(place + 2) == "quarter");
    const bool isHalf =
        right == "half" && isAmong(std::array<std::string_view, 4>{"one", "two", "hour", "dozen"}, left);
    if (isAmount || isHalf || isOneThing(left, right) || (place == start + 1 && isAdjective(left)))
        return false;
    if (place == start + 1 && isGrocery(left)) // "water and chips"
        return true;
    // A duty goes on behind "and", unless a whole one came before and another one follows.
    return !isVerb(words.at(start)) || (isVerb(right) && place > start + 1);
}

bool isGrocery(std::string_view word)
{
    constexpr std::array<std::string_view, 104> table{"basil", "mozzarella", "oil", "turkey", "cranberries", "stuffing",
        "parsley", "celery", "zucchini", "cabbage", "kale", "mango", "mangoes", "pineapple", "melon", "raspberries",
        "cookies", "crackers", "chips", "noodles", "lamb", "shrimp", "prawns", "ghee", "dal", "atta", "paneer",
        "vinegar", "mayonnaise", "margarine", "detergent", "shampoos", "milk", "eggs", "egg", "bread", "butter",
        "cheese", "sugar", "salt", "pepper", "flour", "rice", "pasta", "coffee", "tea", "water", "cream", "yogurt",
        "yoghurt", "honey", "jam", "ham", "bacon", "chicken", "beef", "pork", "fish", "salmon", "tuna", "sausages",
        "apples", "bananas", "oranges", "lemons", "limes", "grapes", "pears", "peaches", "strawberries", "blueberries",
        "tomatoes", "potatoes", "onions", "carrots", "lettuce", "cucumber", "cucumbers", "spinach", "broccoli",
        "mushrooms", "peppers", "garlic", "ginger", "beans", "peas", "corn", "avocados", "cereal", "oatmeal", "beer",
        "wine", "juice", "soap", "shampoo", "toothpaste", "napkins", "tissues", "batteries", "nappies", "diapers",
        "ketchup", "mustard", "chocolate"};
    return isAmong(table, word);
}

/// One thing of two groceries: "chocolate milk", "apples juice" nobody says.
bool isCompound(std::string_view left, std::string_view right)
{
    constexpr auto table = std::to_array<Pair>({{"turkey", "stuffing"}, {"corn", "oil"}, {"corn", "chips"},
        {"chocolate", "cookies"}, {"chicken", "noodles"}, {"egg", "noodles"}, {"rice", "noodles"}, {"rice", "vinegar"},
        {"wine", "vinegar"}, {"rice", "crackers"}, {"chocolate", "milk"}, {"rice", "milk"}, {"honey", "mustard"},
        {"garlic", "bread"}, {"egg", "pasta"}, {"chicken", "sausages"}, {"pork", "sausages"}, {"beef", "sausages"},
        {"honey", "ham"}, {"corn", "bread"}, {"corn", "flour"}, {"rice", "flour"}, {"butter", "beans"},
        {"coffee", "beans"}, {"coffee", "cream"}, {"chocolate", "cream"}, {"cream", "cheese"}, {"garlic", "butter"},
        {"lemons", "juice"}, {"ginger", "beer"}, {"ginger", "tea"}, {"turkey", "bacon"}, {"chocolate", "cereal"},
        {"salmon", "fish"}, {"chocolate", "eggs"}, {"salt", "water"}, {"sugar", "peas"}, {"garlic", "salt"},
        {"milk", "chocolate"}, {"tuna", "fish"}, {"bread", "flour"}, {"beef", "bacon"}, {"tomatoes", "ketchup"}});
    return right == "juice" || std::ranges::find(table, Pair(left, right)) != table.end();
}

/// Groceries in a row, as somebody says them who says no commas; nothing for anything else.
Items groceriesIn(const RequestWords& words, std::size_t first, std::size_t end)
{
    Items items;
    std::size_t start = first;
    for (std::size_t place = first; place < end; ++place) {
        const bool isKind = words.at(place) == "olive" && place + 1 < end && words.at(place + 1) == "oil";
        if (!isGrocery(words.at(place)) && !isKind)
            return {};
        if (isKind)
            continue;
        if (place + 1 == end || !isCompound(words.at(place), words.at(place + 1))) {
            items.push_back(words.said(start, place + 1));
            start = place + 1;
        }
    }
    return items;
}

void addPiece(Items& items, const RequestWords& words, std::size_t first, std::size_t end)
{
    for (std::string& item :
        groceriesIn(words, first, end).empty() ? Items{words.said(first, end)} : groceriesIn(words, first, end)) {
        std::string text = withoutLead(item);
        if (!text.empty() && std::ranges::find(items, text) == items.end())
            items.push_back(std::move(text));
    }
}

/// By commas and semicolons; what stands in quotes stays whole.
Items piecesOf(std::string_view text)
{
    Items pieces(1);
    bool isQuoted = false;
    for (std::size_t place = 0; place < text.size(); ++place) {
        const char letter = text[place];
        isQuoted = isQuoted != (letter == '"');
        const bool isNumber = place > 0 && place + 1 < text.size() && text[place - 1] >= '0' && text[place - 1] <= '9'
            && text[place + 1] >= '0' && text[place + 1] <= '9';
        const bool isEnd = letter == ';' || letter == '\n' || (letter == ',' && !isNumber);
        if (isEnd && !isQuoted)
            pieces.emplace_back();
        else
            pieces.back() += letter;
    }
    return pieces;
}

} // namespace

Items ItemWords::split(std::string_view text)
{
    Items items;
    for (const std::string& piece : piecesOf(text)) {
        static const Pattern lead("^\\s*(?:and|also|plus|then)\\s+", Pattern::caseless);
        const std::string part = lead.replaceAll(piece, "");
        // "Detergent, not the scented one": said of what stands before it.
        static const Pattern said("^\\s*(?:not|but not|without|except)\\s", Pattern::caseless);
        if (!items.empty() && said.find(piece)) {
            items.back() += ", " + trimmed(piece);
            continue;
        }
        if (trimmed(part).starts_with('"')) {
            items.push_back(withoutLead(part));
            continue;
        }
        if (trimmed(part).empty())
            continue;
        // What holds no word, an emoji, has no "and" either.
        const RequestWords words(part);
        if (words.size() == 0) {
            items.push_back(trimmed(part));
            continue;
        }
        std::size_t start = 0;
        for (std::size_t place = 1; place + 1 < words.size(); ++place) {
            const bool isAnd = words.at(place) == "and" || words.at(place) == "plus" || words.at(place) == "&"
                || words.at(place) == "n" || words.at(place) == "nd";
            if (!isAnd || place <= start || !separates(words, start, place))
                continue;
            addPiece(items, words, start, place);
            start = place + 1;
        }
        addPiece(items, words, start, words.size());
    }
    return items;
}

std::string ItemWords::one(std::string_view words)
{
    const Items items = split(words);
    return items.size() == 1 ? items.front() : trimmed(words);
}

std::string ItemWords::named(std::string_view words)
{
    constexpr std::array<std::string_view, 10> ordinals{
        "first", "second", "third", "fourth", "fifth", "sixth", "seventh", "eighth", "ninth", "tenth"};
    constexpr std::array<std::string_view, 10> numbers{
        "one", "two", "three", "four", "five", "six", "seven", "eight", "nine", "ten"};
    static const Pattern numbered("^(?:the )?(?:item|entry|thing|point|position)? ?(?:number |no\\.? ?|nr\\.? ?|# "
                                  "?)?(\\d{1,4}|one|two|three|four|five"
                                  "|six|seven|eight|nine|ten)$",
        Pattern::caseless);
    static const Pattern ordinal(
        "^(?:the |my )?(?:(\\d{1,4})(?:st|nd|rd|th)|(first|second|third|fourth|fifth|sixth|seventh"
        "|eighth|ninth|tenth)|(last|bottom|final|newest|latest|most recent)(?: added)?)"
        "(?: (?:one|item|entry|thing|point|task)(?: (?:that )?(?:i (?:just )?(?:added|put "
        "on)|on it))?)?$",
        Pattern::caseless);
    const std::string text = withoutLead(std::string(words));
    const auto placeIn = [](const auto& table, const std::string& word) {
        const auto found = std::ranges::find(table, RequestText::phrase(word));
        return "#" + std::to_string(found - table.begin() + 1);
    };
    const std::string said = trimmed(words);
    if (const auto match = numbered.find(said)) {
        const bool isBare = match->texts[0].size() == said.size(); // "2" may well be an item
        if (!isBare)
            return match->texts[0].front() <= '9' ? "#" + match->texts[0] : placeIn(numbers, match->texts[0]);
    }
    if (const auto match = ordinal.find(said))
        return !match->texts[0].empty() ? "#" + match->texts[0]
            : !match->texts[1].empty()  ? placeIn(ordinals, match->texts[1])
                                        : "#last";
    return text;
}

Items ItemWords::namedAll(std::string_view words)
{
    // Places are told by the words that things lose: "item 3 and item 5", "the first and the last one".
    static const Pattern between("\\s*,\\s*(?:and\\s+)?|\\s+and\\s+", Pattern::caseless);
    const std::string all(words);
    Items places;
    std::size_t start = 0;
    auto separators = between.findAll(all);
    separators.push_back({{all.size(), all.size()}, {}, {}});
    for (const PatternMatch& separator : separators) {
        places.push_back(named(all.substr(start, separator.range.start - start)));
        start = separator.range.end;
    }
    if (isEverything(words))
        return {"#all"};
    static const Pattern several(
        "^(?:the )?first (two|three|four|five|[2-9])(?: (?:items?|things|ones|tasks))?$", Pattern::caseless);
    if (const auto match = several.find(trimmed(words))) {
        const std::string number = named("item " + match->texts[0]);
        Items firsts;
        for (char place = '1'; number.size() == 2 && place <= number.back(); ++place)
            firsts.push_back(std::string("#") + place);
        return firsts;
    }
    if (std::ranges::all_of(places, [](const std::string& place) { return place.starts_with('#'); }))
        return places;
    return split(words);
}

bool ItemWords::isPointing(std::string_view words)
{
    static const Pattern pointing(
        "^(?:it|this|that|them|these|those|something|(?:(?:the|this|that|these|those|multiple|certain|an?|some|any|new|"
        "another|one|more|last|same) )*"
        "(?:new |more )?(?:items?|one|things?|entry|tasks?|to[ -]?dos?|stuff|products?)(?: name)?"
        "|(?:an? )?(?:few|couple of|some|several|many) (?:more )?(?:things|items)"
        "|an? (?:\\w+ )?(?:name|number|song|contact|word))(?: also| too)?$",
        Pattern::caseless);
    static const Pattern last("^(?:the )?(?:last|first)\\b", Pattern::caseless);
    const std::string said = trimmed(words, " ()[]<>\"'");
    return pointing.find(said) && !last.find(said);
}

bool ItemWords::isDefinite(std::string_view words)
{
    static const Pattern definite(
        "^(?:it|this|that|them|these|those|the (?:item|one|entry|thing|same))\\b", Pattern::caseless);
    return definite.find(trimmed(words)).has_value();
}

bool ItemWords::isGroceries(std::string_view said)
{
    static const Pattern amount(
        "^(?:\\d+|one|two|three|four|five|six|seven|eight|nine|ten|a|an|some|more|of|dozen|half|kilos?|grams?|litres?|"
        "liters?|pints?|pounds?|packs?|packets?|bags?|boxes|box|bottles?|cans?|tins?|loaf|loaves|jars?|cartons?|bunch|"
        "fresh|frozen|oat|soy|almond|brown|white|red|green|olive|whole)$",
        Pattern::caseless);
    const RequestWords words(said);
    bool isAny = false;
    for (std::size_t place = 0; place < words.size(); ++place) {
        const bool isGoods = isGrocery(words.at(place));
        isAny = isAny || isGoods;
        if (!isGoods && !amount.find(words.at(place)))
            return false;
    }
    return isAny;
}

bool ItemWords::isEverything(std::string_view words)
{
    static const Pattern everything("^(?:(?:nearly |almost |absolutely )?everything|all(?: of it| of them)?|all (?:the "
                                    "|my |of the )?(?:items?|things|entries"
                                    "|stuff)|(?:the )?(?:contents?|items)|every (?:item|thing))$",
        Pattern::caseless);
    return everything.find(trimmed(words)).has_value();
}

bool ItemWords::isTicked(std::string_view words)
{
    static const Pattern ticked(
        "^(?:(?:all|everything|what|what['’]s|whats|whatever|the|of|that|which|is|are|has been|have "
        "been|items?|things?|ones?|i(?: "
        "have|['’]ve)?|already)\\b ?)*"
        "(?:ticked|checked|crossed|done|bought|completed?|finished|got)(?: off)?(?: (?:items?|things?|ones?|stuff))?$",
        Pattern::caseless);
    return ticked.find(trimmed(words)).has_value();
}

} // namespace quorvell
