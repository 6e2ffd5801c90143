// SPDX-License-Identifier: MIT
// Takes a short text apart from the front: numbers, signs and names of a fixed form.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace quorvell {

/// Once something does not fit, the text is not fine any more, whatever follows; so it is asked once, at the end.
/// What dates are made of stands here, for the compiler to see through: every note that is read has several.
class TextReader {
public:
    /// How many digits a number may have.
    struct Width {
        std::size_t least = 1;
        std::size_t most = 1;
    };
    /// What a number may be; `most` is at most 9999.
    struct Range {
        int least = 0;
        int most = 0;
    };

    explicit TextReader(std::string_view text)
        : m_rest(text)
    {
    }

    bool isFine() const { return m_isFine; }
    bool isAtEnd() const { return m_rest.empty(); }

    void skip(char expected) { m_isFine = skipIf(expected) && m_isFine; }
    bool skipIf(char expected)
    {
        const bool isThere = m_rest.starts_with(expected);
        m_rest.remove_prefix(isThere ? 1 : 0);
        return isThere;
    }

    /// As many digits as there are, but no more than the width allows.
    std::string_view digits(Width width)
    {
        std::size_t count = 0;
        while (count < std::min(width.most, m_rest.size()) && m_rest[count] >= '0' && m_rest[count] <= '9')
            ++count;
        const std::string_view taken(m_rest.data(), count);
        m_rest.remove_prefix(count);
        require(count >= width.least);
        return taken;
    }
    /// 0 when it does not fit.
    int number(Width width, Range range)
    {
        int value = 0;
        for (const char digit : digits(width))
            value = std::min(value * 10 + (digit - '0'), 10'000); // Beyond every range, and far from overflowing.
        require(value >= range.least && value <= range.most);
        return m_isFine ? value : 0;
    }
    /// Everything before the next of these signs, or all of it.
    std::string_view until(std::string_view signs)
    {
        const std::string_view taken = m_rest.substr(0, m_rest.find_first_of(signs));
        m_rest.remove_prefix(taken.size());
        return taken;
    }
    /// Whoever knows more says that something does not fit.
    void require(bool fits) { m_isFine = m_isFine && fits; }

private:
    std::string_view m_rest;
    bool m_isFine = true;
};

} // namespace quorvell
