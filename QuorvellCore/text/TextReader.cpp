// SPDX-License-Identifier: MIT
#include "QuorvellCore/text/TextReader.h"

#include <algorithm>

namespace quorvell {

bool TextReader::skipIf(char expected)
{
    const bool isThere = m_rest.starts_with(expected);
    m_rest.remove_prefix(isThere ? 1 : 0);
    return isThere;
}

std::string_view TextReader::digits(Width width)
{
    const std::size_t count = std::min({m_rest.find_first_not_of("0123456789"), m_rest.size(), width.most});
    const std::string_view taken = m_rest.substr(0, count);
    m_rest.remove_prefix(count);
    require(count >= width.least);
    return taken;
}

int TextReader::number(Width width, Range range)
{
    int value = 0;
    for (const char digit : digits(width))
        value = std::min(value * 10 + (digit - '0'), 10'000); // Beyond every range, and far from overflowing.
    require(value >= range.least && value <= range.most);
    return m_isFine ? value : 0;
}

std::string_view TextReader::until(std::string_view signs)
{
    const std::string_view taken = m_rest.substr(0, m_rest.find_first_of(signs));
    m_rest.remove_prefix(taken.size());
    return taken;
}

} // namespace quorvell
