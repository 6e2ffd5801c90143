// SPDX-License-Identifier: MIT
#include "Quorvell/app/terminal/StatusLine.h"

#include "Quorvell/app/terminal/ShownOutput.h"
#include "Quorvell/app/terminal/TerminalColumns.h"
#include "QuorvellCore/text/ColumnText.h"
#include "QuorvellCore/text/PrintableText.h"

#include <algorithm>
#include <ostream>
#include <string_view>
#include <utility>

namespace quorvell {

namespace {

constexpr std::string_view eraseLine = "\r\x1b[K";
constexpr std::size_t longestLine = 4096; ///< Bytes; more fits no terminal.

/// A character that is cut in half is repaired with the rest.
std::string_view startOf(const std::string& text)
{
    return std::string_view(text).substr(0, longestLine);
}

} // namespace

void StatusLine::show(const std::string& text)
{
    std::string line = printableText(startOf(text));
    std::replace_if(
        line.begin(), line.end(), [](char letter) { return letter == '\n' || letter == '\t'; }, ' ');
    const std::string fitting = firstColumns(line, terminalColumns() - 1);
    if (fitting == m_text)
        return;
    hide();
    m_text = fitting;
    if (!m_text.empty())
        ShownOutput::faint(m_out, m_text, m_colour);
    m_out << std::flush;
}

void StatusLine::hide()
{
    if (!std::exchange(m_text, {}).empty())
        ShownOutput::control(m_out, eraseLine);
    m_out << std::flush;
}

void StatusLine::aside(const std::function<void()>& print)
{
    const std::string text = m_text;
    hide();
    print();
    show(text);
}

} // namespace quorvell
