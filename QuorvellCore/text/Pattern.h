// SPDX-License-Identifier: MIT
// Regular expressions in ICU's syntax over UTF-8 text.
#pragma once

#include "QuorvellCore/text/PatternText.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// A stretch of UTF-8 text in bytes, [start, end).
struct TextRange {
    std::size_t start = 0;
    std::size_t end = 0;

    bool operator==(const TextRange&) const = default;
};

/// One match: the whole and its groups, absent where a group took no part.
struct PatternMatch {
    TextRange range;
    std::vector<std::optional<TextRange>> groups; ///< groups[0] is group 1.
    std::vector<std::string> texts; ///< The groups' texts, empty where absent.
};

/// Compiled once, then read from any thread. A pattern that runs away (hostile input) stops and counts as no match.
class Pattern {
public:
    enum class Case { sensitive, insensitive };
    static constexpr Case caseless = Case::insensitive;

    explicit Pattern(std::string_view expression, Case letterCase = Case::sensitive);
    ~Pattern();
    Pattern(const Pattern&) = delete;
    Pattern& operator=(const Pattern&) = delete;

    /// False when the expression itself is faulty; such a pattern matches nothing.
    bool isValid() const;

    /// The first match at or after byte `from`.
    std::optional<PatternMatch> find(std::string_view text, std::size_t from = 0) const;
    std::optional<PatternMatch> find(const PatternText& text, std::size_t from = 0) const;
    std::vector<PatternMatch> findAll(std::string_view text) const;
    /// Every match replaced by `replacement`, taken literally.
    std::string replaceAll(std::string_view text, std::string_view replacement) const;

private:
    struct Compiled;
    std::unique_ptr<Compiled> m_compiled;
};

} // namespace quorvell
