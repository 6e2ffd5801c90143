// SPDX-License-Identifier: MIT
#include "QuorvellCore/notebook/Note.h"

#include "QuorvellCore/notebook/ExplanationText.h"
#include "QuorvellCore/text/UUID.h"

#include <string_view>

namespace quorvell {

namespace {

std::string joined(const std::vector<std::string>& pieces, std::string_view separator)
{
    std::string text;
    for (const std::string& piece : pieces) {
        if (&piece != &pieces.front())
            text += separator;
        text += piece;
    }
    return text;
}

std::string numberedSteps(const std::vector<std::string>& steps)
{
    std::vector<std::string> lines;
    lines.reserve(steps.size());
    for (const std::string& step : steps)
        lines.push_back(std::to_string(lines.size() + 1) + ". " + step);
    return joined(lines, "\n");
}

std::string howToText(const Note& note)
{
    std::vector<std::string> parts;
    for (std::string part : {numberedSteps(note.steps), note.body})
        if (!part.empty())
            parts.push_back(std::move(part));
    return joined(parts, "\n\n");
}

} // namespace

std::string Note::newID(const std::array<std::uint8_t, 16>& randomBytes)
{
    constexpr std::size_t length = 12;
    std::string id = uuidText(randomBytes);
    std::erase(id, '-');
    id.resize(length);
    return id;
}

std::string Note::searchText() const
{
    const std::optional<std::string> label = source ? source->label() : std::nullopt;
    const std::optional<std::string> sourceTitle = source ? source->title : std::nullopt;
    std::vector<std::string> pieces = {
        title, body, question.value_or(""), goal.value_or(""), label.value_or(""), sourceTitle.value_or("")};
    pieces.insert(pieces.end(), steps.begin(), steps.end());
    for (const NoteTurn& turn : thread) {
        pieces.push_back(turn.question);
        pieces.push_back(turn.answer);
    }
    return joined(pieces, " ");
}

std::string Note::plainText() const
{
    switch (kind) {
    case NoteKind::howTo:
        return howToText(*this);
    case NoteKind::explanation:
        return ExplanationText::parse(body).text();
    case NoteKind::clip:
    case NoteKind::note:
    case NoteKind::aboutMe:
        return body;
    }
    return body;
}

bool Note::isVisibleToQuorvell() const
{
    return !archived && (kind != NoteKind::aboutMe || confirmed);
}

} // namespace quorvell
