// SPDX-License-Identifier: MIT
#include "Understanding/dialogue/Pointing.h"

#include "QuorvellCore/text/Pattern.h"
#include "QuorvellCore/text/TextMatch.h"
#include "Understanding/time/SpokenMoment.h"
#include "Understanding/words/ListPlace.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <iterator>
#include <string>

namespace quorvell {

namespace {

/// Words around a name; those of `kinds` may be part of it.
constexpr auto fillers =
    std::to_array<std::string_view>({"the", "my", "our", "with", "a", "an", "one", "meeting", "appointment", "event",
        "about", "called", "on", "at", "for", "to", "read", "me", "out", "note", "i", "mean", "meant"});
constexpr auto kinds = std::to_array<std::string_view>({"lesson", "lessons", "class", "classes", "session", "sessions",
    "meetings", "appointments", "events", "practice", "visit", "thing"});

bool isAmong(const auto& table, std::string_view word)
{
    return std::ranges::find(table, word) != table.end();
}

/// "Lunches" is about lunch.
bool holds(const std::string& title, std::string word)
{
    if (title.find(" " + word) != std::string::npos)
        return true;
    if (!word.ends_with('s') || word.size() < 4)
        return false;
    word.pop_back();
    return title.find(" " + word) != std::string::npos
        || (word.ends_with("e") && title.find(" " + word.substr(0, word.size() - 1)) != std::string::npos);
}

enum class Kinds { matter, areLeftOut };

bool holdsWords(const std::string& title, const std::string& words, Kinds kindWords)
{
    const std::string text = " " + TextMatch::normalized(title) + " ";
    const std::string wanted = TextMatch::normalized(words);
    bool names = kindWords == Kinds::matter;
    for (std::size_t start = 0; start < wanted.size();) {
        const std::size_t end = std::min(wanted.find(' ', start), wanted.size());
        const std::string word = wanted.substr(start, end - start);
        start = end + 1;
        const bool isLeftOut = isAmong(fillers, word) || (kindWords == Kinds::areLeftOut && isAmong(kinds, word));
        if (!isLeftOut && !holds(text, word))
            return false;
        names = names || !isLeftOut;
    }
    return names && !wanted.empty();
}

/// "the one on friday", "the 1 pm one".
std::vector<FoundThing> ofTime(const std::vector<FoundThing>& things, const std::string& words, const LocalTime& around)
{
    static const Pattern pointer("\\b(?:the|that|one)\\b|['’]s\\b", Pattern::caseless);
    const auto moment = SpokenMoment::read(pointer.replaceAll(words, ""), around);
    if (!moment)
        return {};
    const DateParts& date = moment->date;
    std::vector<FoundThing> fitting;
    std::ranges::copy_if(things, std::back_inserter(fitting), [&](const FoundThing& thing) {
        return thing.start && (!moment->namesDay || thing.start->wholeDay() == date.wholeDay())
            && (date.allDay || (thing.start->hour == date.hour && thing.start->minute == date.minute));
    });
    return fitting;
}

} // namespace

std::vector<FoundThing> Pointing::named(const std::vector<FoundThing>& things, std::string_view words)
{
    std::vector<FoundThing> found;
    for (const auto kindWords : {Kinds::matter, Kinds::areLeftOut}) {
        std::ranges::copy_if(things, std::back_inserter(found),
            [&](const FoundThing& thing) { return holdsWords(thing.title, std::string(words), kindWords); });
        if (!found.empty())
            break;
    }
    return found;
}

std::optional<FoundThing> Pointing::at(
    const std::vector<FoundThing>& things, std::string_view said, const LocalTime& around)
{
    static const Pattern lead(
        "^(?:(?:read|open|show|take|i mean|i meant|no|yes)(?: me)?(?: out)?[,]? )+", Pattern::caseless);
    const std::string words = lead.replaceAll(said, "");
    if (const auto place = ListPlace::read(words)) {
        const auto index = place->among(things.size());
        return index ? std::optional(things[*index]) : std::nullopt;
    }
    auto fitting = named(things, words);
    if (fitting.size() != 1)
        fitting = ofTime(things, words, around);
    return fitting.size() == 1 ? std::optional(fitting.front()) : std::nullopt;
}

} // namespace quorvell
