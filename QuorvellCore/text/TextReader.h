// SPDX-License-Identifier: MIT
// Takes a short text apart from the front: numbers, signs and names of a fixed form.
#pragma once

#include <cstddef>
#include <string_view>

namespace quorvell {

/// Once something does not fit, the text is not fine any more, whatever follows; so it is asked once, at the end.
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
    bool skipIf(char expected);

    /// As many digits as there are, but no more than the width allows.
    std::string_view digits(Width width);
    /// 0 when it does not fit.
    int number(Width width, Range range);
    /// Everything before the next of these signs, or all of it.
    std::string_view until(std::string_view signs);
    /// Whoever knows more says that something does not fit.
    void require(bool fits) { m_isFine = m_isFine && fits; }

private:
    std::string_view m_rest;
    bool m_isFine = true;
};

} // namespace quorvell
