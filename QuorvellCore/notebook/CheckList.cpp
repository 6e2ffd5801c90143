// SPDX-License-Identifier: MIT
#include "QuorvellCore/notebook/CheckList.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/OneLine.h"
#include "QuorvellCore/text/PrintableText.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

constexpr std::string_view blanks = " \t";
constexpr unsigned mostNumbered = 999'999'999; ///< Nine digits: as long as Markdown takes a number for one.

std::string_view withoutEnd(std::string_view line)
{
    const std::size_t last = line.find_last_not_of("\r\n");
    return line.substr(0, last == line.npos ? 0 : last + 1);
}

std::string_view endOf(std::string_view line)
{
    return line.substr(withoutEnd(line).size());
}

bool isEnded(std::string_view line)
{
    return line.ends_with('\n');
}

/// As the lines there end.
std::string usualEnd(const std::vector<std::string>& lines)
{
    return !lines.empty() && lines.front().ends_with("\r\n") ? "\r\n" : "\n";
}

bool isDigit(char letter)
{
    return letter >= '0' && letter <= '9';
}

/// Behind "-", "*", "+", "3." or "3)", seen from `start`; `start` itself where there is none.
std::size_t endOfMarker(std::string_view line, std::size_t start)
{
    constexpr std::size_t longestNumber = 9; // as Markdown has it
    std::size_t end = start;
    while (end < line.size() && end - start < longestNumber && isDigit(line[end]))
        ++end;
    const std::string_view signs = end == start ? "-*+" : ".)";
    return end < line.size() && signs.find(line[end]) != signs.npos ? end + 1 : start;
}

std::size_t indentOf(std::string_view line)
{
    return std::min(line.find_first_not_of(blanks), line.size());
}

/// Of "```" and "~~~"; empty for any other line.
std::string_view fenceIn(std::string_view line)
{
    constexpr std::size_t shortest = 3;
    const std::string_view text = line.substr(indentOf(line));
    for (const char sign : {'`', '~'}) {
        const std::size_t length = std::min(text.find_first_not_of(sign), text.size());
        if (length >= shortest)
            return text.substr(0, length);
    }
    return {};
}

/// A line that says nothing by itself.
bool isFrame(std::string_view line)
{
    const std::string_view text = line.substr(indentOf(line));
    return text.empty() || text.starts_with('#') || text.starts_with("<!--") || text.ends_with(':')
        || text.find_first_not_of("-*_= ") == text.npos;
}

} // namespace

std::optional<std::string> CheckList::itemText(std::string_view text)
{
    // Others read the file by programs that obey control characters.
    std::string line = onOneLine(printableText(repairUtf8(text)));
    if (line.empty() || characterCount(line) > longestItem)
        return std::nullopt;
    return line;
}

CheckList::CheckList(std::string_view body)
{
    for (std::size_t start = 0; start < body.size();) {
        const std::size_t end = std::min(body.find('\n', start), body.size() - 1) + 1;
        m_lines.emplace_back(body.substr(start, end - start));
        start = end;
    }
    read();
}

std::optional<CheckList::Box> CheckList::boxIn(std::string_view line)
{
    constexpr std::size_t length = 3; // "[ ]"
    const std::string_view text = withoutEnd(line);
    const std::size_t indent = indentOf(text);
    const std::size_t marker = endOfMarker(text, indent);
    const std::size_t box = std::min(text.find_first_not_of(blanks, marker), text.size());
    if (marker == indent || box == marker || text.size() < box + length || text[box] != '[' || text[box + 2] != ']')
        return std::nullopt;
    const bool isMarked = std::string_view(" xX").find(text[box + 1]) != std::string_view::npos;
    const std::string_view behind = text.substr(box + length);
    if (!isMarked || (!behind.empty() && blanks.find(behind.front()) == blanks.npos))
        return std::nullopt;
    return Box{.indent = indent, .mark = box + 1, .hasItem = !onOneLine(behind).empty()};
}

void CheckList::read()
{
    m_boxes.clear();
    m_items.clear();
    m_boxOfItem.clear();
    m_isNothingElse = true;
    m_textEnd = m_lines.size();
    std::string_view fence;
    for (std::size_t index = 0; index < m_lines.size(); ++index) {
        const std::string_view line = withoutEnd(m_lines[index]);
        const std::string_view marks = fenceIn(line);
        if (!fence.empty()) {
            if (marks.starts_with(fence)) {
                fence = {};
                m_textEnd = m_lines.size();
            }
            continue;
        }
        fence = marks;
        m_textEnd = fence.empty() ? m_lines.size() : index;
        auto box = fence.empty() ? boxIn(line) : std::nullopt;
        if (box) {
            box->line = index;
            m_boxes.push_back(*box);
            if (box->hasItem) {
                m_items.push_back({onOneLine(line.substr(box->mark + 2)), line[box->mark] != ' '});
                m_boxOfItem.push_back(m_boxes.size() - 1);
            }
        }
        const bool belongsToBox = !m_boxes.empty() && indentOf(line) > 0;
        m_isNothingElse = m_isNothingElse && fence.empty() && (box || belongsToBox || isFrame(line));
    }
}

std::size_t CheckList::openItems() const
{
    return static_cast<std::size_t>(std::ranges::count(m_items, false, &CheckListItem::isTicked));
}

std::string CheckList::body() const
{
    std::string body;
    for (const std::string& line : m_lines)
        body += line;
    return body;
}

/// A line that stands deeper than the box before it and is none itself.
bool CheckList::belongsTo(const Box& box, std::string_view line)
{
    const std::string_view text = withoutEnd(line);
    return !text.empty() && indentOf(text) > box.indent && fenceIn(text).empty() && !boxIn(text);
}

std::size_t CheckList::endOfBox(const Box& box) const
{
    std::size_t end = box.line + 1;
    while (end < m_lines.size() && belongsTo(box, m_lines[end]))
        ++end;
    return end;
}

/// In the form of the last of the outermost boxes, with the next number where they are numbered.
std::string CheckList::newLine(const CheckListItem& item) const
{
    std::string form = "- ";
    if (!m_boxes.empty()) {
        const auto outer = std::ranges::min_element(m_boxes.rbegin(), m_boxes.rend(), {}, &Box::indent);
        const std::string_view line = m_lines[outer->line];
        const std::size_t marker = endOfMarker(line, outer->indent);
        form = line.substr(0, outer->mark - 1);
        unsigned number = 0;
        for (std::size_t digit = outer->indent; digit + 1 < marker; ++digit)
            number = number * 10 + static_cast<unsigned>(line[digit] - '0');
        if (marker > outer->indent + 1)
            form.replace(outer->indent, marker - 1 - outer->indent, std::to_string(std::min(number + 1, mostNumbered)));
    }
    return form + (item.isTicked ? "[x] " : "[ ] ") + item.text;
}

void CheckList::add(const CheckListItem& item)
{
    const auto free = std::ranges::find(m_boxes, false, &Box::hasItem);
    if (free != m_boxes.end()) {
        std::string& line = m_lines[free->line];
        line = line.substr(0, free->mark) + (item.isTicked ? "x] " : " ] ") + item.text + std::string(endOf(line));
        return read();
    }
    const std::size_t place = m_boxes.empty() ? m_textEnd : endOfBox(m_boxes.back());
    const std::string lineEnd = usualEnd(m_lines);
    std::string line = newLine(item);
    const bool isBehindOpenEnd = place > 0 && !isEnded(m_lines[place - 1]);
    if (isBehindOpenEnd)
        m_lines[place - 1] = std::string(withoutEnd(m_lines[place - 1])) + lineEnd;
    else if (!m_lines.empty())
        line += lineEnd;
    m_lines.insert(m_lines.begin() + static_cast<std::ptrdiff_t>(place), std::move(line));
    read();
}

void CheckList::setTicked(std::size_t item, bool isTicked)
{
    if (item >= m_items.size())
        return;
    const Box& box = m_boxes[m_boxOfItem[item]];
    m_lines[box.line][box.mark] = isTicked ? 'x' : ' ';
    m_items[item].isTicked = isTicked;
}

void CheckList::setText(std::size_t item, std::string_view text)
{
    if (item >= m_items.size())
        return;
    const Box& box = m_boxes[m_boxOfItem[item]];
    std::string& line = m_lines[box.line];
    line = line.substr(0, box.mark + 2) + " " + std::string(text) + std::string(endOf(line));
    read();
}

/// From the last line to the first, so that what belongs to a box is what still follows it.
void CheckList::remove(const std::vector<std::size_t>& items)
{
    if (m_items.empty() || items.empty())
        return;
    const bool endsOpen = !isEnded(m_lines.back());
    const std::string lineEnd = usualEnd(m_lines);
    const std::string form = m_lines[m_boxes.front().line].substr(0, m_boxes.front().mark - 1);
    std::vector<const Box*> removed(m_lines.size());
    for (const std::size_t item : items)
        if (item < m_items.size())
            removed[m_boxes[m_boxOfItem[item]].line] = &m_boxes[m_boxOfItem[item]];
    const bool isNoneLeft =
        static_cast<std::size_t>(std::ranges::count_if(removed, [](const Box* box) { return box != nullptr; }))
        == m_boxes.size();
    std::vector<std::string> kept;
    for (std::size_t line = m_lines.size(); line-- > 0;) {
        if (!removed[line])
            kept.push_back(std::move(m_lines[line]));
        else
            while (!kept.empty() && belongsTo(*removed[line], kept.back()))
                kept.pop_back();
        if (isNoneLeft && line == m_boxes.front().line)
            kept.push_back(form + "[ ]" + lineEnd);
    }
    std::ranges::reverse(kept);
    m_lines = std::move(kept);
    if (endsOpen && !m_lines.empty())
        m_lines.back().resize(withoutEnd(m_lines.back()).size());
    read();
}

} // namespace quorvell
