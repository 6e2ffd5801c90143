// SPDX-License-Identifier: MIT
#include "Quorvell/notebook/NoteTitle.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/OneLine.h"

namespace quorvell {

std::string noteTitleFrom(const std::string& text)
{
    constexpr std::size_t longest = 60;
    const std::string content = trimmed(text);
    const std::string line = onOneLine(content.substr(0, content.find('\n')));
    std::string title = firstCharacters(line, longest);
    const std::size_t lastSpace = title.rfind(' ');
    if (title.size() < line.size() && lastSpace != std::string::npos)
        title.erase(lastSpace);
    return title;
}

} // namespace quorvell
