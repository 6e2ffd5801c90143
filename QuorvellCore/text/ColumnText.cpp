// SPDX-License-Identifier: MIT
#include "QuorvellCore/text/ColumnText.h"

#include "QuorvellCore/text/CharacterBreaks.h"
#include "QuorvellCore/text/CodePoints.h"

#include <unicode/uchar.h>

#include <algorithm>

namespace quorvell {

namespace {

constexpr std::string_view tabInSpaces = "    ";

bool takesNoColumn(UChar32 point)
{
    constexpr UChar32 softHyphen = 0xAD;
    constexpr UChar32 firstJoiningJamo = 0x1160; // Vowels and finals of Korean syllables stand in the cell before.
    constexpr UChar32 lastJoiningJamo = 0x11FF;
    switch (u_charType(point)) {
    case U_NON_SPACING_MARK:
    case U_ENCLOSING_MARK:
    case U_CONTROL_CHAR:
        return true;
    case U_FORMAT_CHAR:
        return point != softHyphen;
    default:
        return point >= firstJoiningJamo && point <= lastJoiningJamo;
    }
}

/// Each code point by itself, as most terminals do: joined emoji take the room of their parts.
std::size_t columnsOf(char32_t codePoint)
{
    const auto point = static_cast<UChar32>(codePoint);
    if (codePoint >= ' ' && codePoint < 0x7F)
        return 1; // Nearly all are; answers may be millions of them.
    if (takesNoColumn(point))
        return 0;
    const int width = u_getIntPropertyValue(point, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

/// One line of a text on its way to several of the terminal.
class LineWrapper {
public:
    LineWrapper(std::string& into, std::size_t columns)
        : m_into(into)
        , m_columns(columns)
    {
    }

    void wrap(std::string_view line, std::size_t indent)
    {
        const std::size_t start = std::min(line.find_first_not_of(' '), line.size());
        m_indent = std::min(start + indent, m_columns / 2);
        add(line.substr(0, start));
        for (std::size_t word = start; word < line.size();) {
            const std::size_t end = std::min(line.find(' ', word), line.size());
            const std::size_t next = std::min(line.find_first_not_of(' ', end), line.size());
            addWord(line.substr(word, end - word));
            m_gap = line.substr(end, next - end);
            word = next;
        }
    }

private:
    void addWord(std::string_view word)
    {
        const bool fits = m_used + m_gap.size() + columnsOf(word) <= m_columns;
        if (fits || !m_hasWord) {
            add(m_gap);
        } else {
            m_into += '\n';
            m_into.append(m_indent, ' ');
            m_used = m_indent;
        }
        m_hasWord = true;
        add(word);
    }
    void add(std::string_view text)
    {
        m_into += text;
        m_used += columnsOf(text);
    }
    static std::size_t columnsOf(std::string_view text) { return quorvell::columnsOf(text); }

    std::string& m_into;
    std::size_t m_columns;
    std::size_t m_indent = 0;
    std::size_t m_used = 0; ///< Of the terminal's line.
    bool m_hasWord = false;
    std::string_view m_gap; ///< Between the last word and the next; goes where the line breaks.
};

std::string withoutTabs(std::string_view text)
{
    std::string plain;
    for (const char letter : text)
        plain += letter == '\t' ? tabInSpaces : std::string_view(&letter, 1);
    return plain;
}

} // namespace

std::size_t columnsOf(std::string_view text)
{
    std::size_t columns = 0;
    for (std::size_t position = 0; position < text.size();)
        columns += columnsOf(nextCodePoint(text, position));
    return columns;
}

std::string firstColumns(std::string_view text, std::size_t columns)
{
    CharacterBreaks breaks(text);
    std::size_t end = 0;
    for (std::size_t used = 0; breaks.next(); end = breaks.end()) {
        used += columnsOf(breaks.character());
        if (used > columns)
            break;
    }
    return std::string(text.substr(0, end));
}

std::string wrappedToColumns(std::string_view text, std::size_t columns, std::size_t indent)
{
    const std::string plain = withoutTabs(text);
    std::string wrapped;
    for (std::size_t start = 0; start <= plain.size();) {
        const std::size_t end = std::min(plain.find('\n', start), plain.size());
        LineWrapper(wrapped, columns).wrap(std::string_view(plain).substr(start, end - start), indent);
        if (end < plain.size())
            wrapped += '\n';
        start = end + 1;
    }
    return wrapped;
}

} // namespace quorvell
