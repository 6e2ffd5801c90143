// SPDX-License-Identifier: MIT
#include "QuorvellCore/text/PatternText.h"

#include "QuorvellCore/text/CodePoints.h"

#include <algorithm>

namespace quorvell {

PatternText::PatternText(std::string_view text)
    : m_text(text)
{
    if (isAscii(text)) {
        m_units.assign(text.begin(), text.end());
        return;
    }
    m_units.reserve(text.size());
    m_bytes.reserve(text.size() + 1);
    for (std::size_t position = 0; position < text.size();) {
        const auto start = static_cast<std::uint32_t>(position);
        const char32_t codePoint = nextCodePoint(text, position);
        if (codePoint >= 0x10000) {
            m_units += static_cast<char16_t>(0xD7C0 + (codePoint >> 10));
            m_bytes.push_back(start);
        }
        m_units += static_cast<char16_t>(codePoint >= 0x10000 ? 0xDC00 + (codePoint & 0x3FF) : codePoint);
        m_bytes.push_back(start);
    }
    m_bytes.push_back(static_cast<std::uint32_t>(text.size()));
}

std::size_t PatternText::unitOf(std::size_t byte) const
{
    if (m_bytes.empty())
        return std::min(byte, m_units.size());
    const auto unit = std::lower_bound(m_bytes.begin(), m_bytes.end(), byte);
    return std::min(static_cast<std::size_t>(unit - m_bytes.begin()), m_units.size());
}

} // namespace quorvell
