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
    std::string text = title;
    const auto add = [&text](std::string_view piece) { text.append(" ").append(piece); };
    const auto addIfAny = [&add](const std::optional<std::string>& piece) { add(piece ? *piece : std::string_view()); };
    add(body);
    addIfAny(question);
    addIfAny(goal);
    addIfAny(source ? source->label() : std::nullopt);
    addIfAny(source ? source->title : std::nullopt);
    for (const std::string& step : steps)
        add(step);
    for (const NoteTurn& turn : thread) {
        add(turn.question);
        add(turn.answer);
    }
    return text;
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
