// SPDX-License-Identifier: MIT
// Walks the user-perceived characters of a UTF-8 text in order; the text must outlive the walk.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

namespace quorvell {

/// Stretches of plain ASCII never reach the Unicode rules.
class CharacterBreaks {
public:
    explicit CharacterBreaks(std::string_view text);
    ~CharacterBreaks();
    CharacterBreaks(const CharacterBreaks&) = delete;
    CharacterBreaks& operator=(const CharacterBreaks&) = delete;

    /// Moves to the next character; false at the end.
    bool next();

    /// The character moved to last, and where it ends in the text.
    std::string_view character() const { return m_text.substr(m_start, m_end - m_start); }
    std::size_t end() const { return m_end; }

private:
    struct Rules;

    std::size_t endByRules();

    std::string_view m_text;
    std::size_t m_start = 0;
    std::size_t m_end = 0;
    std::unique_ptr<Rules> m_rules; ///< Made when the first character outside ASCII comes up.
};

} // namespace quorvell
