// SPDX-License-Identifier: MIT
// An utterance word by word: as it is compared, and where it stands.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// A contraction is taken apart ("what's" is "what" and "is"), so that both ways to say it are one.
class RequestWords {
public:
    static constexpr std::size_t most = 400; ///< Words that are looked at; the others stay with the last one.

    explicit RequestWords(std::string_view utterance);

    std::size_t size() const { return m_words.size(); }
    /// In lower case, without apostrophes and signs at its ends; empty behind the last one.
    std::string_view at(std::size_t index) const;
    /// Whether a comma, a colon or the like stands behind it.
    bool endsClause(std::size_t index) const { return m_words[index].endsClause; }
    /// As they were said, without the signs at both ends, [first, end).
    std::string said(std::size_t first, std::size_t end) const;
    std::string said() const { return said(0, size()); }
    /// Whether the words from `index` on are these.
    bool areAt(std::size_t index, const std::vector<std::string>& words) const;

private:
    struct Word {
        std::string text;
        std::size_t start = 0; ///< In bytes of the utterance.
        std::size_t end = 0;
        bool endsClause = false;
    };

    std::size_t endOf(std::size_t start, std::size_t end) const;
    void add(const std::string& text, std::size_t start, std::size_t end);

    std::string m_utterance;
    std::vector<Word> m_words;
};

} // namespace quorvell
