// SPDX-License-Identifier: MIT
#include "Quorvell/app/terminal/StatusLine.h"

#include "Quorvell/app/terminal/TerminalColumns.h"
#include "QuorvellCore/text/ColumnText.h"

#include <ostream>
#include <utility>

namespace quorvell {

namespace {

constexpr const char* eraseLine = "\r\x1b[K";

} // namespace

void StatusLine::show(const std::string& text)
{
    const std::string fitting = firstColumns(text, terminalColumns() - 1);
    if (fitting == m_text)
        return;
    hide();
    m_text = fitting;
    if (!m_text.empty())
        m_out << faint(m_text, m_colour) << std::flush;
}

void StatusLine::hide()
{
    if (!std::exchange(m_text, {}).empty())
        m_out << eraseLine << std::flush;
}

void StatusLine::aside(const std::function<void()>& print)
{
    const std::string text = m_text;
    hide();
    print();
    show(text);
}

} // namespace quorvell
