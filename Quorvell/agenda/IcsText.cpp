// SPDX-License-Identifier: MIT
#include "Quorvell/agenda/IcsText.h"

#include "Quorvell/agenda/IcsLimits.h"

#include <algorithm>
#include <array>

namespace quorvell {

namespace {

bool isBlank(char letter)
{
    return letter == ' ' || letter == '\t';
}

/// Where the lines of a text end. Behind its last line feed, carriage returns end them, as for the parser.
struct Lines {
    std::string_view text;
    std::size_t feedsEnd = text.rfind('\n') + 1; ///< Zero where there is none.

    char breakAt(std::size_t start) const { return start < feedsEnd ? '\n' : '\r'; }
    std::size_t end(std::size_t start) const
    {
        const std::size_t mark = text.find(breakAt(start), start);
        return mark == std::string_view::npos ? text.size() : mark + 1;
    }
    /// With the lines that continue it.
    std::size_t foldedEnd(std::size_t start) const
    {
        std::size_t last = end(start);
        while (last < text.size() && isBlank(text[last]))
            last = end(last);
        return last;
    }
};

/// As the parser puts a folded line together, without the break at its end.
std::string unfolded(const Lines& lines, std::size_t start, std::size_t end)
{
    std::string whole;
    for (std::size_t place = start; place < end; place = lines.end(place)) {
        std::string_view piece = lines.text.substr(place, lines.end(place) - place);
        while (piece.ends_with('\n') || piece.ends_with('\r'))
            piece.remove_suffix(1);
        whole.append(piece.substr(place > start && !piece.empty() ? 1 : 0));
    }
    return whole;
}

char upper(char letter)
{
    return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
}

/// The name of a folded line's property, in capitals, without any blanks and breaks. Only as long as those that count.
std::string nameOf(std::string_view line)
{
    constexpr std::size_t longest = 12;
    std::string name;
    for (const char letter : line) {
        if (letter == ':' || letter == ';' || name.size() > longest)
            break;
        if (!isBlank(letter) && letter != '\r' && letter != '\n')
            name += upper(letter);
    }
    constexpr std::string_view mark = "\xEF\xBB\xBF"; // Some programs begin a file with it.
    return name.starts_with(mark) ? name.substr(mark.size()) : name;
}

std::size_t commasIn(std::string_view line)
{
    return static_cast<std::size_t>(std::count(line.begin(), line.end(), ','));
}

/// Counts lines and values, and follows which component is inside which.
class Shape {
public:
    /// A folded line.
    void take(std::string_view line)
    {
        const std::string name = nameOf(line);
        ++m_lines;
        if (name == "RDATE" || name == "EXDATE" || name == "CATEGORIES" || name == "RESOURCES" || name == "FREEBUSY")
            m_lines += commasIn(line);
        // Whatever may be taken for a beginning counts, and for an end only what cannot be anything else.
        if (name == "BEGIN")
            open();
        else if (name == "END" && line.size() > 3 && (line[3] == ':' || line[3] == ';'))
            m_depth -= m_depth > 0 ? 1 : 0;
        else
            m_isWithinLimits = m_isWithinLimits && ++m_linesAt[m_depth] <= IcsLimits::mostLinesOfComponent;
    }

    bool isWithinLimits() const { return m_isWithinLimits && m_lines <= IcsLimits::mostLines; }

private:
    void open()
    {
        m_isWithinLimits = m_isWithinLimits && m_depth < IcsLimits::deepestNesting;
        m_depth = std::min(m_depth + 1, IcsLimits::deepestNesting);
        m_linesAt[m_depth] = 0;
    }

    std::size_t m_lines = 0; ///< And values of those that hold many.
    std::size_t m_depth = 0;
    std::array<std::size_t, IcsLimits::deepestNesting + 1> m_linesAt{}; ///< Of the components that are open.
    bool m_isWithinLimits = true;
};

/// The parser looks for the end of a line anew for every few bytes of it, so none stays long.
void appendFolded(std::string& ready, const Lines& lines, std::size_t start, std::size_t end)
{
    for (std::size_t place = start; place < end; place = lines.end(place)) {
        std::string_view piece = lines.text.substr(place, lines.end(place) - place);
        while (piece.size() > IcsLimits::longestLine) {
            std::size_t length = IcsLimits::longestLine;
            while (length > 1 && (piece[length - 1] == '\r' || piece[length] == '\r' || piece[length] == '\n'))
                --length;
            ready.append(piece.substr(0, length)).append({lines.breakAt(place), ' '});
            piece.remove_prefix(length);
        }
        ready.append(piece);
    }
}

/// The parser drops what comes behind the five hundredth value of a line, and with it whatever was struck out there.
/// What stands before the values is repeated, so it has to be short.
bool canBeSplit(std::string_view line)
{
    const std::string name = nameOf(line);
    return (name == "RDATE" || name == "EXDATE") && commasIn(line) >= IcsLimits::mostValuesOfLine
        && line.substr(0, IcsLimits::longestLine).find(':') != std::string_view::npos;
}

void appendSplit(std::string& ready, const std::string& whole, char lineBreak)
{
    bool isQuoted = false;
    std::size_t begin = 0;
    for (; begin < whole.size() && (isQuoted || whole[begin] != ':'); ++begin)
        isQuoted = isQuoted != (whole[begin] == '"');
    const std::string_view head = std::string_view(whole).substr(0, std::min(begin, IcsLimits::longestLine));
    std::string_view values = std::string_view(whole).substr(std::min(begin + 1, whole.size()));
    while (!values.empty()) {
        std::size_t end = 0;
        for (std::size_t count = 0; count < IcsLimits::mostValuesOfLine && end < values.size(); ++count)
            end = std::min(values.find(',', end), values.size() - 1) + 1;
        std::string_view some = values.substr(0, end);
        values.remove_prefix(end);
        if (!values.empty())
            some.remove_suffix(1);
        ready.append(head).append(":").append(some).append(1, lineBreak);
    }
}

} // namespace

std::optional<std::string> IcsText::prepared(std::string_view text)
{
    if (text.size() > IcsLimits::longestText || text.find('\0') != std::string_view::npos)
        return std::nullopt;
    std::string ready;
    ready.reserve(text.size() + 2 * (text.size() / IcsLimits::longestLine));
    const Lines lines{text};
    Shape shape;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = lines.foldedEnd(start);
        const std::string_view line = text.substr(start, end - start);
        shape.take(line);
        if (!shape.isWithinLimits())
            return std::nullopt;
        if (canBeSplit(line))
            appendSplit(ready, unfolded(lines, start, end), lines.breakAt(start));
        else
            appendFolded(ready, lines, start, end);
        start = end;
    }
    return ready;
}

} // namespace quorvell
