// SPDX-License-Identifier: MIT
#include "Understanding/skills/notes/NoteReply.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/TextMatch.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <vector>

namespace quorvell {

namespace {

using Purpose = RequestMemory::SearchPurpose;

constexpr std::size_t longestReading = 600; ///< Characters of a note that are read out.
constexpr std::size_t titlesNamed = 3; ///< Of the notes found.
constexpr std::array ordinals{"first", "second", "third", "fourth", "fifth"};

struct Note {
    std::string title;
    std::string snippet;
};

std::vector<Note> notesOf(const Json& result)
{
    std::vector<Note> notes;
    const Json* list = memberOf(result, "notes");
    if (!list || !list->is_array())
        return notes;
    for (const Json& note : *list)
        notes.push_back(
            {trimmed(readString(note, "title").value_or("")), trimmed(readString(note, "snippet").value_or(""))});
    return notes;
}

std::string asSentence(std::string text)
{
    text = trimmed(text);
    if (text.empty() || std::string_view(".!?:").find(text.back()) != std::string_view::npos)
        return text;
    return text + ".";
}

/// The text of a note, cut to what one likes to listen to.
std::string readable(const std::string& text)
{
    if (characterCount(text) <= longestReading)
        return asSentence(text);
    std::string start = firstCharacters(text, longestReading);
    start.resize(std::min(start.size(), start.find_last_of(" \n")));
    return start + ". The rest is in your notebook.";
}

std::string titleAndText(const std::string& title, const std::string& text)
{
    const std::string plainTitle = TextMatch::normalized(title);
    // A title that was made of the first words is not told twice.
    constexpr std::ptrdiff_t fewWords = 3;
    const std::string plainText = TextMatch::normalized(text);
    const bool isBeginning = plainText.starts_with(plainTitle) && std::ranges::count(plainTitle, ' ') >= fewWords;
    const bool saysTheSame = plainTitle.empty() || plainText == plainTitle || isBeginning;
    if (text.empty())
        return "It is called " + asSentence(title);
    return (saysTheSame ? "" : "It is called " + asSentence(title) + " ") + "It says: " + readable(text);
}

/// The owner says how many there are; the list may be shorter.
std::size_t countIn(const Json& result, const std::vector<Note>& notes)
{
    const auto count = readInteger(result, "count").value_or(0);
    return std::max(notes.size(), static_cast<std::size_t>(std::max<std::int64_t>(count, 0)));
}

std::string noteList(const std::vector<Note>& notes)
{
    std::string reply;
    const std::size_t named = std::min(notes.size(), titlesNamed);
    for (std::size_t index = 0; index < named; ++index)
        reply += std::string(" The ") + ordinals[index] + " is called " + asSentence(notes[index].title);
    return reply + " Which one should I read?";
}

std::string nothingFound(std::string_view query, Purpose purpose)
{
    switch (purpose) {
    case Purpose::listNotes:
    case Purpose::readNewest:
        return "There are no notes in your notebook.";
    case Purpose::tell:
    case Purpose::read:
    case Purpose::remove:
        break;
    }
    return query.empty() ? "I found nothing."
                         : "I found nothing about " + trimmed(query, ".!? ") + " in your notebook.";
}

} // namespace

Json NoteReply::onlyNotes(const Json& result)
{
    const Json* list = memberOf(result, "notes");
    Json notes = Json::array();
    for (std::size_t index = 0; list && list->is_array() && index < list->size(); ++index) {
        const Json& note = (*list)[index];
        const bool isOther = memberOf(note, "remind_at") || memberOf(note, "trigger") || memberOf(note, "list")
            || readString(note, "kind") == "about_me";
        if (!isOther)
            notes.push_back(note);
    }
    Json only = Json::object();
    only["count"] = notes.size();
    only["notes"] = std::move(notes);
    return only;
}

std::string NoteReply::kept(const Json&)
{
    return "I have made a note of that.";
}

std::string NoteReply::found(const Json& result, std::string_view query, Purpose purpose)
{
    const auto notes = notesOf(result);
    if (notes.empty())
        return nothingFound(query, purpose);
    const std::size_t count = countIn(result, notes);
    const std::string head = count == 1 ? "There is one note." : "There are " + std::to_string(count) + " notes.";
    if (notes.size() == 1)
        return head + " " + titleAndText(notes.front().title, notes.front().snippet);
    return head + noteList(notes);
}

std::string NoteReply::read(const Json& result)
{
    return titleAndText(
        trimmed(readString(result, "title").value_or("")), trimmed(readString(result, "text").value_or("")));
}

} // namespace quorvell
