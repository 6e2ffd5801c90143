// SPDX-License-Identifier: MIT
#include "Quorvell/session/reports/ThoughtSummary.h"

#include "QuorvellCore/text/Characters.h"

#include <algorithm>

namespace quorvell {

void ThoughtSummary::add(std::string_view delta)
{
    if (delta.empty() && !m_text.empty() && m_text.back() != '\n')
        m_text += '\n';
    m_text += delta.substr(delta.size() - std::min(delta.size(), most));
    if (m_text.size() <= most)
        return;
    // At the end of a line, else in the middle of one, where half a character may be left over.
    const std::size_t excess = m_text.size() - most;
    const std::size_t lineEnd = m_text.find('\n', excess - 1);
    m_text.erase(0, lineEnd + 1 < m_text.size() ? lineEnd + 1 : excess);
    m_text = repairUtf8(m_text).substr(0, most);
}

std::string ThoughtSummary::newestLine() const
{
    std::string_view rest = m_text;
    while (!rest.empty()) {
        const std::size_t lineEnd = rest.find_last_of('\n');
        const bool isOnly = lineEnd == std::string_view::npos;
        if (std::string line = trimmed(isOnly ? rest : rest.substr(lineEnd + 1), "*#_` "); !line.empty())
            return line;
        rest = isOnly ? std::string_view() : rest.substr(0, lineEnd);
    }
    return {};
}

} // namespace quorvell
