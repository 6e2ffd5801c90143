// SPDX-License-Identifier: MIT
#include "Quorvell/app/terminal/PastedPieces.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/PrintableText.h"

#include <algorithm>
#include <cstddef>

namespace quorvell {

namespace {

/// Long texts would fill the terminal.
std::string summaryOf(const std::string& text)
{
    const auto lines = std::count(text.begin(), text.end(), '\n') + 1;
    return "[pasted: "
        + (lines > 1 ? std::to_string(lines) + " lines]" : std::to_string(characterCount(text)) + " characters]");
}

std::string shownForm(const std::string& text)
{
    const auto lineBreaks = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    if (lineBreaks > PastedPieces::mostLineBreaksShown || characterCount(text) > PastedPieces::mostCharactersShown)
        return summaryOf(text);
    std::string shown;
    for (const char letter : printableText(text)) {
        if (letter == '\n')
            shown += PastedPieces::shownLineBreak;
        else
            shown += letter == '\t' ? ' ' : letter;
    }
    return shown;
}

std::string withLineBreaks(std::string text)
{
    for (auto position = text.find(PastedPieces::shownLineBreak); position != std::string::npos;
         position = text.find(PastedPieces::shownLineBreak, position + 1))
        text.replace(position, PastedPieces::shownLineBreak.size(), "\n");
    return text;
}

struct Place {
    std::size_t start;
    std::size_t length;
    const std::string* text;
};

} // namespace

std::string PastedPieces::paste(const std::string& text)
{
    m_pastes.push_back({text, shownForm(text)});
    return m_pastes.back().shown;
}

TypedMessage PastedPieces::message(const std::string& line) const
{
    std::vector<Place> places;
    const auto isTaken = [&places](std::size_t start, std::size_t length) {
        return std::any_of(places.begin(), places.end(),
            [&](const Place& place) { return start < place.start + place.length && place.start < start + length; });
    };
    for (const Paste& paste : m_pastes) {
        if (paste.shown.empty())
            continue;
        std::size_t start = line.find(paste.shown);
        while (start != std::string::npos && isTaken(start, paste.shown.size()))
            start = line.find(paste.shown, start + 1);
        if (start == std::string::npos)
            return {{{withLineBreaks(line), true}}, false};
        places.push_back({start, paste.shown.size(), &paste.text});
    }
    std::sort(
        places.begin(), places.end(), [](const Place& one, const Place& other) { return one.start < other.start; });

    TypedMessage message;
    std::size_t position = 0;
    for (const Place& place : places) {
        if (place.start > position)
            message.pieces.push_back({line.substr(position, place.start - position), false});
        message.pieces.push_back({*place.text, true});
        position = place.start + place.length;
    }
    if (position < line.size() || message.pieces.empty())
        message.pieces.push_back({line.substr(position), false});
    return message;
}

} // namespace quorvell
