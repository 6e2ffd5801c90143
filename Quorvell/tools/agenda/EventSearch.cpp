// SPDX-License-Identifier: MIT
#include "Quorvell/tools/agenda/EventSearch.h"

#include "QuorvellCore/text/TextMatch.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>

namespace quorvell {

namespace {

bool holdsWord(const std::string& text, std::string word)
{
    constexpr std::size_t shortestPlural = 4;
    if (text.find(" " + word) != std::string::npos)
        return true;
    if (word.size() < shortestPlural || !word.ends_with('s'))
        return false;
    word.erase(word.size() - (word.ends_with("'s") ? 2 : 1));
    return text.find(" " + word) != std::string::npos;
}

std::vector<std::string> wordsOf(std::string_view said)
{
    const std::string text = TextMatch::normalized(said);
    std::vector<std::string> words;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find(' ', start), text.size());
        words.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return words;
}

bool holds(std::string_view said, std::string_view words)
{
    const std::string text = " " + TextMatch::normalized(said);
    const auto wanted = wordsOf(words);
    return std::ranges::all_of(wanted, [&](const std::string& word) { return holdsWord(text, word); });
}

/// One letter more, less, another one, or two that changed places.
bool isSlipOf(const std::string& typed, const std::string& meant)
{
    constexpr std::size_t shortest = 3;
    const std::size_t most = std::max(typed.size(), meant.size());
    const std::size_t least = std::min(typed.size(), meant.size());
    if (least < shortest || most <= shortest || most - least > 1)
        return false;
    std::size_t same = 0;
    while (same < least && typed[same] == meant[same])
        ++same;
    std::size_t sameBehind = 0;
    while (sameBehind < least - same && typed[typed.size() - 1 - sameBehind] == meant[meant.size() - 1 - sameBehind])
        ++sameBehind;
    const bool isSwapped = typed.size() == meant.size() && same + sameBehind + 2 == most
        && typed[same] == meant[same + 1] && typed[same + 1] == meant[same];
    return same + sameBehind + 1 >= most || isSwapped;
}

bool holdsNearly(std::string_view said, std::string_view words)
{
    const auto there = wordsOf(said);
    const auto wanted = wordsOf(words);
    return std::ranges::any_of(wanted, [&](const std::string& word) {
        return std::ranges::any_of(
            there, [&](const std::string& other) { return other == word || isSlipOf(word, other); });
    });
}

/// Of a series the first.
template <typename Fits> std::vector<CalendarEvent> those(const std::vector<CalendarEvent>& all, const Fits& fit)
{
    std::vector<CalendarEvent> found;
    std::set<std::pair<char, std::string>> series;
    for (const CalendarEvent& event : all)
        if (fit(event.title + " " + event.place + " " + event.notes)
            && (!event.repeats || series.insert({event.id.calendar, event.id.uid}).second))
            found.push_back(event);
    return found;
}

} // namespace

std::vector<CalendarEvent> EventSearch::events(const std::vector<CalendarEvent>& all, std::string_view words)
{
    auto found = those(all, [&](const std::string& text) { return holds(text, words); });
    return found.empty() ? those(all, [&](const std::string& text) { return holdsNearly(text, words); }) : found;
}

std::vector<Note> EventSearch::reminders(const std::vector<Note>& all, std::string_view words)
{
    std::vector<Note> found;
    for (const Note& note : all)
        if (holds(note.title, words))
            found.push_back(note);
    return found;
}

} // namespace quorvell
