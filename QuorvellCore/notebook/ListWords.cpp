// SPDX-License-Identifier: MIT
#include "QuorvellCore/notebook/ListWords.h"

#include "QuorvellCore/text/CodePoints.h"
#include "QuorvellCore/text/TextMatch.h"

#include <algorithm>
#include <array>
#include <string>

namespace quorvell {

namespace {

using Words = std::vector<std::string>;

template <std::size_t count> bool isOneOf(const std::array<std::string_view, count>& table, std::string_view word)
{
    return std::ranges::find(table, word) != table.end();
}

/// "groceries" and "grocery" are one, "tomatoes" and "tomato", "boxes" and "box", "eggs" and "egg".
std::string singular(std::string word)
{
    constexpr std::size_t shortest = 4;
    if (word == "shoes" || word == "toes")
        return word.substr(0, word.size() - 1);
    if (word.size() < shortest || !word.ends_with('s') || word.ends_with("ss") || word.ends_with("us"))
        return word;
    word.pop_back();
    if (word.ends_with("ie") && word.size() > shortest)
        return word.replace(word.size() - 2, 2, "y");
    for (const std::string_view end : {"oe", "xe", "se", "che", "she"})
        if (word.ends_with(end) && word.size() > end.size() + 1)
            return word.substr(0, word.size() - 1);
    return word;
}

Words wordsOf(std::string_view text)
{
    Words words;
    const std::string plain = TextMatch::normalized(text) + " ";
    for (std::size_t start = 0, end = plain.find(' ');
         end != std::string::npos && words.size() < ListWords::mostCompared;
         start = end + 1, end = plain.find(' ', start)) {
        std::string word = plain.substr(start, end - start);
        std::erase(word, '\'');
        if ((word == "do" || word == "dos") && !words.empty() && words.back() == "to") // "to do" and "todo" are one
            words.back() = "todo";
        else if (!word.empty())
            words.push_back(word == "todos" ? "todo" : std::move(word));
    }
    return words;
}

bool isListWord(std::string_view word)
{
    constexpr std::array<std::string_view, 6> table{"list", "lists", "checklist", "checklists", "lsit", "lst"};
    return isOneOf(table, word);
}

/// What says nothing of which thing is meant.
bool isIdleWord(std::string_view word)
{
    constexpr std::array<std::string_view, 15> table{
        "the", "a", "an", "my", "our", "some", "any", "of", "for", "new", "please", "your", "this", "that", "to"};
    return isOneOf(table, word);
}

/// "Cleaning" of the garage is to "clean" it.
std::string stem(const std::string& word)
{
    constexpr std::string_view ending = "ing";
    constexpr std::size_t shortest = 7;
    return word.size() >= shortest && word.ends_with(ending) ? word.substr(0, word.size() - ending.size()) : word;
}

/// The words that matter, as one would compare them.
Words essential(std::string_view text)
{
    Words words;
    for (std::string& word : wordsOf(text))
        if (!isIdleWord(word))
            words.push_back(stem(singular(std::move(word))));
    return words;
}

/// One word for what people call both ways.
std::string kindOf(std::string_view word)
{
    constexpr std::array<std::string_view, 5> shopping{"shopping", "grocery", "shop", "supermarket", "market"};
    constexpr std::array<std::string_view, 5> duties{"todo", "task", "chore", "job", "duty"};
    return std::string(isOneOf(shopping, word) ? "shopping" : isOneOf(duties, word) ? "todo" : word);
}

Words nameOf(std::string_view text)
{
    Words words;
    for (std::string& word : wordsOf(text))
        if (!isIdleWord(word) && !isListWord(word))
            words.push_back(singular(std::move(word)));
    return words;
}

Words kindsOf(const Words& words)
{
    constexpr std::array<std::string_view, 3> things{"thing", "item", "stuff"};
    if (words.size() == 2 && isOneOf(things, words.front())) // "things to buy", "things to do"
        return {kindOf(words.back() == "buy" || words.back() == "get" ? "shopping" : words.back())};
    Words kinds;
    for (const std::string& word : words)
        if (std::string kind = kindOf(word); kinds.empty() || kinds.back() != kind)
            kinds.push_back(std::move(kind));
    return kinds;
}

bool isWithin(const Words& wanted, const Words& held)
{
    return std::ranges::all_of(
        wanted, [&](const std::string& word) { return std::ranges::find(held, word) != held.end(); });
}

std::u32string codePoints(std::string_view text)
{
    std::u32string points;
    for (std::size_t position = 0; position < text.size();)
        points += nextCodePoint(text, position);
    return points;
}

/// Whether one letter was left out, put in, taken for another or changed places with its neighbour.
bool isOneSlipApart(std::string_view leftText, std::string_view rightText)
{
    constexpr std::size_t shortest = 4; // "egg" and "leg" are two things
    const std::u32string left = codePoints(leftText);
    const std::u32string right = codePoints(rightText);
    if (std::max(left.size(), right.size()) > std::min(left.size(), right.size()) + 1 || left.size() < shortest)
        return false;
    std::size_t start = 0;
    while (start < left.size() && start < right.size() && left[start] == right[start])
        ++start;
    std::size_t end = 0;
    while (end + start < left.size() && end + start < right.size()
        && left[left.size() - 1 - end] == right[right.size() - 1 - end])
        ++end;
    const std::size_t leftRest = left.size() - start - end;
    const std::size_t rightRest = right.size() - start - end;
    const bool isSwapped =
        leftRest == 2 && rightRest == 2 && left[start] == right[start + 1] && left[start + 1] == right[start];
    return (leftRest <= 1 && rightRest <= 1) || isSwapped;
}

bool isNear(const Words& wanted, const Words& held)
{
    if (wanted.size() != held.size())
        return false;
    for (std::size_t index = 0; index < wanted.size(); ++index)
        if (wanted[index] != held[index] && !isOneSlipApart(wanted[index], held[index]))
            return false;
    return true;
}

ListLikeness compared(const Words& wanted, const Words& held)
{
    if (wanted.empty() || held.empty())
        return ListLikeness::none;
    if (wanted == held)
        return ListLikeness::alike;
    return isWithin(wanted, held) ? ListLikeness::part : isNear(wanted, held) ? ListLikeness::near : ListLikeness::none;
}

ListWords::Best bestOf(const auto& held, const auto& likenessOf)
{
    ListWords::Best best;
    for (std::size_t place = 0; place < held.size(); ++place) {
        const ListLikeness likeness = likenessOf(held[place]);
        if (likeness > best.likeness)
            best = {likeness, {}};
        if (likeness == best.likeness && likeness != ListLikeness::none)
            best.places.push_back(place);
    }
    return best;
}

} // namespace

ListThing::ListThing(std::string_view said)
    : text(said)
    , plain(TextMatch::normalized(said))
    , words(essential(said))
{
}

ListLikeness ListWords::ofItem(const ListThing& wanted, const ListThing& held)
{
    // What has no letters, an emoji, is compared as it stands.
    if (wanted.text == held.text || (!wanted.plain.empty() && wanted.plain == held.plain))
        return ListLikeness::same;
    return compared(wanted.words, held.words);
}

ListLikeness ListWords::ofName(std::string_view wanted, std::string_view title)
{
    const Words name = nameOf(wanted);
    const Words held = nameOf(title);
    if (!name.empty() && name == held)
        return ListLikeness::same;
    return compared(kindsOf(name), kindsOf(held));
}

bool ListWords::isName(std::string_view words)
{
    return !nameOf(words).empty();
}

bool ListWords::isListTitle(std::string_view title)
{
    const Words words = wordsOf(title);
    return std::ranges::any_of(words, isListWord) || (!words.empty() && words.back() == "todo");
}

std::string ListWords::spoken(std::string_view title)
{
    // Names of persons and places keep their capital.
    constexpr auto common = std::to_array<std::string_view>({"shopping", "grocery", "groceries", "to", "todo",
        "packing", "party", "wish", "reading", "work", "book", "books", "movie", "movies", "gift", "gifts", "food",
        "birthday", "things", "list", "errands", "chores", "holiday", "guest", "guests", "present", "presents",
        "wedding", "watch", "places", "dog", "cat", "camera", "camping", "vacation", "travel", "monthly", "weekly",
        "daily", "yearly", "jewels", "names", "items", "tasks", "goals", "home", "house", "garden", "school", "music",
        "songs", "games", "hardware", "baby", "kids", "family", "friends", "car", "meal", "dinner", "lunch", "recipe",
        "recipes", "menu", "bills", "budget", "buying", "boat", "people", "cleaning", "office", "project", "ideas",
        "bucket", "study", "medicine", "toys", "clothes", "checklist"});
    const Words words = wordsOf(title);
    std::string name(title);
    // "Grocery Store" is a name as it stands.
    const bool isPlain = std::ranges::none_of(
        name.substr(name.empty() ? 0 : 1), [](char letter) { return letter >= 'A' && letter <= 'Z'; });
    if (isPlain && !words.empty() && isOneOf(common, words.front()) && name.front() >= 'A' && name.front() <= 'Z')
        name.front() = static_cast<char>(name.front() - 'A' + 'a');
    return std::ranges::any_of(words, isListWord) ? name : name + " list";
}

ListWords::Best ListWords::bestItems(const ListThing& wanted, const std::vector<ListThing>& held)
{
    return bestOf(held, [&](const ListThing& thing) { return ofItem(wanted, thing); });
}

ListWords::Best ListWords::bestNames(std::string_view wanted, const std::vector<std::string_view>& titles)
{
    return bestOf(titles, [&](std::string_view title) { return ofName(wanted, title); });
}

} // namespace quorvell
