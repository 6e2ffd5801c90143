// SPDX-License-Identifier: MIT
#include "Understanding/words/WordRewriting.h"

#include <algorithm>
#include <vector>

namespace quorvell {

namespace {

std::string filledIn(std::string_view with, const PatternMatch& match)
{
    std::string text;
    for (std::size_t index = 0; index < with.size(); ++index) {
        const std::size_t group =
            with[index] == '$' && index + 1 < with.size() ? static_cast<std::size_t>(with[index + 1] - '1') : 9;
        if (group >= match.texts.size()) {
            text += with[index];
            continue;
        }
        text += match.texts[group];
        ++index;
    }
    return text;
}

bool overlaps(const TextRange& range, const std::vector<PatternMatch>& quotes)
{
    return std::ranges::any_of(quotes,
        [&](const PatternMatch& quote) { return range.start < quote.range.end && quote.range.start < range.end; });
}

std::string replacedOutside(const Pattern& pattern, std::string_view with, const std::string& text)
{
    static const Pattern quoted("\"[^\"]*\"");
    const auto matches = pattern.findAll(text);
    if (matches.empty())
        return text;
    const auto quotes = quoted.findAll(text);
    std::string rewritten;
    std::size_t position = 0;
    for (const PatternMatch& match : matches) {
        if (overlaps(match.range, quotes) || match.range.start < position)
            continue;
        rewritten += text.substr(position, match.range.start - position) + filledIn(with, match);
        position = match.range.end;
    }
    return rewritten + text.substr(position);
}

} // namespace

WordRewriting::Compiled::Compiled(std::string_view expression, std::string_view replacement)
    : pattern(expression, Pattern::caseless)
    , with(replacement)
{
}

WordRewriting::WordRewriting(std::initializer_list<Row> rows)
{
    for (const Row& row : rows)
        m_rows.emplace_back(row.pattern, row.with);
}

WordRewriting::WordRewriting(const std::deque<std::pair<std::string, std::string>>& rows)
{
    for (const auto& [pattern, with] : rows)
        m_rows.emplace_back(pattern, with);
}

std::string WordRewriting::outsideQuotes(std::string text) const
{
    for (const auto& [pattern, with] : m_rows)
        text = replacedOutside(pattern, with, text);
    return text;
}

std::string WordRewriting::first(const std::string& text) const
{
    for (const auto& [pattern, with] : m_rows) {
        if (const auto match = pattern.find(text))
            return text.substr(0, match->range.start) + filledIn(with, *match) + text.substr(match->range.end);
    }
    return text;
}

} // namespace quorvell
