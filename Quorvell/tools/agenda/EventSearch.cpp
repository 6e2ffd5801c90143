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

bool holds(std::string_view said, std::string_view words)
{
    const std::string text = " " + TextMatch::normalized(said);
    const std::string wanted = TextMatch::normalized(words);
    for (std::size_t start = 0; start < wanted.size();) {
        const std::size_t end = std::min(wanted.find(' ', start), wanted.size());
        if (!holdsWord(text, wanted.substr(start, end - start)))
            return false;
        start = end + 1;
    }
    return true;
}

} // namespace

std::vector<CalendarEvent> EventSearch::events(const std::vector<CalendarEvent>& all, std::string_view words)
{
    std::vector<CalendarEvent> found;
    std::set<std::pair<char, std::string>> series;
    for (const CalendarEvent& event : all) {
        if (!holds(event.title + " " + event.place + " " + event.notes, words))
            continue;
        if (!event.repeats || series.insert({event.id.calendar, event.id.uid}).second)
            found.push_back(event);
    }
    return found;
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
