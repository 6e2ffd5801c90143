// SPDX-License-Identifier: MIT
#include "Understanding/skills/lists/ListItemTalk.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "QuorvellCore/text/TextMatch.h"
#include "Understanding/skills/lists/ItemWords.h"
#include "Understanding/skills/lists/ListPhrase.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quorvell {

namespace {

using Kind = ListIntent::Kind;
using Found = std::optional<ListIntent>;
using Texts = std::vector<std::string>;

/// " wash the car " as " wash car ": an article more or less does not matter.
std::string padded(std::string_view words)
{
    static const Pattern articles("\\b(?:the|an?|my|our|some) ");
    return " " + articles.replaceAll(TextMatch::normalized(words) + " ", "");
}

/// What somebody may have done who says that they "washed" or "took": "wash", "take".
Texts presentOf(const std::string& verb)
{
    constexpr auto table = std::to_array<std::pair<std::string_view, std::string_view>>({{"took", "take"},
        {"taken", "take"}, {"did", "do"}, {"done", "do"}, {"made", "make"}, {"bought", "buy"}, {"got", "get"},
        {"wrote", "write"}, {"written", "write"}, {"sent", "send"}, {"paid", "pay"}, {"fed", "feed"},
        {"swept", "sweep"}, {"met", "meet"}, {"rang", "ring"}, {"told", "tell"}, {"brought", "bring"}, {"hung", "hang"},
        {"put", "put"}, {"read", "read"}, {"cut", "cut"}, {"spoke", "speak"}, {"saw", "see"}, {"mown", "mow"},
        {"built", "build"}, {"gave", "give"}, {"went", "go"}, {"found", "find"}});
    const auto row = std::ranges::find(table, verb, &std::pair<std::string_view, std::string_view>::first);
    if (row != table.end())
        return {std::string(row->second)};
    constexpr std::size_t shortest = 4;
    if (verb.size() < shortest || !verb.ends_with("ed"))
        return {};
    const std::string stem = verb.substr(0, verb.size() - 2);
    Texts forms{stem, stem + "e"};
    if (stem.ends_with('i'))
        forms.push_back(stem.substr(0, stem.size() - 1) + "y");
    if (stem[stem.size() - 1] == stem[stem.size() - 2]) // "mopped"
        forms.push_back(stem.substr(0, stem.size() - 1));
    return forms;
}

/// "I vacuumed the stairs": the one duty that begins with the verb and has the other words.
std::optional<std::string> dutyDone(const std::string& text, const Texts& items)
{
    static const Pattern deed(
        "^(?:i|we)(?:['’]ve| have)?(?: already| just| now)* (\\w+) (.+?)(?: already| now| today|,? too)*$",
        Pattern::caseless);
    const auto match = deed.find(text);
    if (!match)
        return std::nullopt;
    Texts fitting;
    for (const std::string& verb : presentOf(TextMatch::normalized(match->texts[0])))
        for (const std::string& item : ListItemTalk::named(items, match->texts[1]))
            if (padded(item).starts_with(" " + verb + " "))
                fitting.push_back(item);
    return fitting.size() == 1 ? std::optional(fitting.front()) : std::nullopt;
}

/// The same things, if each of them is on the list.
Found ofKnownItems(Kind kind, const std::string& said, const Texts& items)
{
    auto intent = ListIntent::ofItems(kind, "", said);
    const bool areKnown = !intent.items.empty() && intent.kind == kind
        && std::ranges::all_of(
            intent.items, [&](const std::string& words) { return !ListItemTalk::named(items, words).empty(); });
    return areKnown ? Found(std::move(intent)) : std::nullopt;
}

} // namespace

std::vector<std::string> ListItemTalk::named(const Texts& items, std::string_view words)
{
    const std::string wanted = padded(words);
    Texts found;
    if (trimmed(wanted).empty())
        return found;
    for (const std::string& item : items)
        if (padded(item).find(wanted) != std::string::npos)
            found.push_back(item);
    return found;
}

std::optional<ListIntent> ListItemTalk::read(std::string_view core, const ListTalk& talk)
{
    const std::string text = ListPhrase::inOneLine(core);
    if (text.size() > ListIntent::longestRead || talk.items.empty())
        return std::nullopt;
    static const Pattern removing(
        "^(?:(?:and|also|please|now|oh|actually) )*(?:scratch|strike|take off|take|cross out) "
        "(.+?)(?: (?:off|from it|off it|out))?$",
        Pattern::caseless);
    static const Pattern offIt(
        "^(?:scratch|strike|take off|cross out)\\b|\\b(?:off|from it|off it|out)$", Pattern::caseless);
    static const Pattern ticked("^(?:(?:and|also|please|now|okay) )*(?:(?:tick|check|cross)(?: off)? (.+?)(?: "
                                "off)?|mark (.+?) as (?:done|bought|got|complete|finished))$",
        Pattern::caseless);
    static const Pattern unticked("^(?:(?:and|also|please|now) )*(?:untick|uncheck) (.+)$", Pattern::caseless);
    static const Pattern bought(
        "^(?:(?:i|we)(?:['’]ve| have)?(?: already| just)* )?(?:got|bought|picked up|finished|done|"
        "packed|did) (.+?)(?: already| now|,? too)*$",
        Pattern::caseless);
    static const Pattern isDone(
        "^(?:the )?(.+?) (?:is|are)(?: now| already| all)* (?:done|bought|finished|packed|ready|"
        "clean|sorted|ticked off|checked off|in the (?:cart|basket|trolley|bag))$",
        Pattern::caseless);
    static const Pattern asks("^(?:what|when|where|who|how|why|is|are|if|tell|i |we )", Pattern::caseless);
    if (const auto match = unticked.find(text))
        return ofKnownItems(Kind::untick, match->texts[0], talk.items);
    if (const auto match = ticked.find(text)) {
        static const Pattern again(" again$", Pattern::caseless);
        const std::string words = match->texts[0] + match->texts[1];
        // Places move when something is ticked off: it is asked which one is meant.
        return ItemWords::named(again.replaceAll(words, "")).starts_with('#')
            ? Found(ListIntent{.kind = Kind::tick})
            : ofKnownItems(Kind::tick, words, talk.items);
    }
    static const Pattern clearing(
        "^(?:please )?(?:clear|remove|delete|throw out|take off) (?:out )?(.+)$", Pattern::caseless);
    if (const auto match = clearing.find(text); match && ItemWords::isTicked(match->texts[0]))
        return ListIntent{.kind = Kind::clearTicked};
    if (const auto match = offIt.find(text) ? removing.find(text) : std::nullopt)
        return ofKnownItems(Kind::remove, match->texts[0], talk.items);
    if (const auto duty = dutyDone(text, talk.items))
        return ListIntent{.kind = Kind::tick, .items = {*duty}};
    if (const auto match = bought.find(text))
        return ofKnownItems(Kind::tick, match->texts[0], talk.items);
    if (const auto match = asks.find(text) ? std::nullopt : isDone.find(text))
        return ofKnownItems(Kind::tick, match->texts[0], talk.items);
    return std::nullopt;
}

std::optional<ListIntent> ListItemTalk::readRenaming(std::string_view core, const ListTalk& talk)
{
    static const Pattern form(
        "^(?:(?:please|and|now) )*(?:re-?name|change the name of|change|replace|swap) (.+?) (?:to|into|as|with|for|by) "
        "(.+)$",
        Pattern::caseless);
    static const Pattern naming("re-?name|the name of", Pattern::caseless);
    const std::string text = ListPhrase::inOneLine(core);
    const auto match = text.size() <= ListIntent::longestRead ? form.find(text) : std::nullopt;
    const std::string words = match ? ListPhrase::withoutEnds(match->texts[1]) : std::string();
    if (words.empty())
        return std::nullopt;
    const auto items = named(talk.items, match->texts[0]);
    if (items.size() == 1)
        return ListIntent{.kind = Kind::replace, .items = {items.front(), ItemWords::one(words)}};
    const auto list = std::ranges::find_if(
        talk.names, [&](const std::string& name) { return padded(name) == padded(match->texts[0]); });
    return naming.find(text) && list != talk.names.end()
        ? Found(ListIntent{.kind = Kind::rename, .list = *list, .title = words})
        : std::nullopt;
}

std::optional<std::string> ListItemTalk::readOther(std::string_view core)
{
    static const Pattern other("^(?:no+|sorry|wait|oh|oops|actually|not (?:that|those|them|it))?(?:[,.]? "
                               "(?:no+|sorry|wait|actually))*[,.]? ?i (?:mean|meant|said|wanted)[,]? (.+)$"
                               "|^(?:no+|not (?:that|those)(?: one)?)[,]? (?:the) (.+)$",
        Pattern::caseless);
    const auto match = other.find(ListPhrase::inOneLine(core));
    if (!match)
        return std::nullopt;
    const std::string words = ItemWords::named(match->texts[0].empty() ? match->texts[1] : match->texts[0]);
    return words.empty() ? std::nullopt : std::optional(words);
}

} // namespace quorvell
