// SPDX-License-Identifier: MIT
#include "QuorvellCore/text/Pattern.h"

#include <unicode/regex.h>

#include <limits>

namespace quorvell {

namespace {

/// ICU's unit is 10,000 steps of backtracking, about a millisecond; no honest text comes near.
constexpr std::int32_t timeLimit = 500;

/// Longer texts are not searched: ICU counts in 32 bits.
constexpr std::size_t maximumUnits = std::numeric_limits<std::int32_t>::max() / 4;

TextRange byteRange(const PatternText& text, std::int32_t start, std::int32_t end)
{
    return {text.byteOf(static_cast<std::size_t>(start)), text.byteOf(static_cast<std::size_t>(end))};
}

PatternMatch readMatch(const PatternText& text, const icu::RegexMatcher& matcher, UErrorCode& status)
{
    PatternMatch match;
    match.range = byteRange(text, matcher.start(status), matcher.end(status));
    const auto count = static_cast<std::size_t>(matcher.groupCount());
    match.groups.resize(count);
    match.texts.resize(count);
    for (std::size_t group = 0; group < count; ++group) {
        const std::int32_t start = matcher.start(static_cast<std::int32_t>(group + 1), status);
        if (start < 0)
            continue;
        const TextRange range = byteRange(text, start, matcher.end(static_cast<std::int32_t>(group + 1), status));
        match.groups[group] = range;
        match.texts[group] = text.text().substr(range.start, range.end - range.start);
    }
    return match;
}

} // namespace

struct Pattern::Compiled {
    std::unique_ptr<icu::RegexPattern> pattern;

    /// A matcher of its own for every search: only the pattern may be shared between threads.
    template <typename Search> void search(const PatternText& text, const Search& use) const
    {
        if (!pattern || text.units().size() > maximumUnits)
            return;
        UErrorCode status = U_ZERO_ERROR;
        const icu::UnicodeString units(false, text.units().data(), static_cast<std::int32_t>(text.units().size()));
        const std::unique_ptr<icu::RegexMatcher> matcher(pattern->matcher(units, status));
        if (U_FAILURE(status))
            return;
        matcher->setTimeLimit(timeLimit, status);
        use(*matcher, status);
    }
};

Pattern::Pattern(std::string_view expression, Case letterCase)
    : m_compiled(std::make_unique<Compiled>())
{
    UErrorCode status = U_ZERO_ERROR;
    const auto source =
        icu::UnicodeString::fromUTF8(icu::StringPiece(expression.data(), static_cast<std::int32_t>(expression.size())));
    const std::uint32_t flags = letterCase == Case::insensitive ? UREGEX_CASE_INSENSITIVE : 0;
    m_compiled->pattern.reset(icu::RegexPattern::compile(source, flags, status));
    if (U_FAILURE(status))
        m_compiled->pattern.reset();
}

Pattern::~Pattern() = default;

bool Pattern::isValid() const
{
    return m_compiled->pattern != nullptr;
}

std::optional<PatternMatch> Pattern::find(std::string_view text, std::size_t from) const
{
    return find(PatternText(text), from);
}

std::optional<PatternMatch> Pattern::find(const PatternText& text, std::size_t from) const
{
    std::optional<PatternMatch> match;
    m_compiled->search(text, [&](icu::RegexMatcher& matcher, UErrorCode& status) {
        const auto start = static_cast<std::int64_t>(text.unitOf(from));
        if (matcher.find(start, status) && U_SUCCESS(status))
            match = readMatch(text, matcher, status);
    });
    return match;
}

std::vector<PatternMatch> Pattern::findAll(std::string_view text) const
{
    std::vector<PatternMatch> matches;
    const PatternText prepared(text);
    m_compiled->search(prepared, [&](icu::RegexMatcher& matcher, UErrorCode& status) {
        while (matcher.find(status) && U_SUCCESS(status))
            matches.push_back(readMatch(prepared, matcher, status));
    });
    return matches;
}

std::string Pattern::replaceAll(std::string_view text, std::string_view replacement) const
{
    std::string result;
    std::size_t kept = 0;
    for (const PatternMatch& match : findAll(text)) {
        result.append(text.substr(kept, match.range.start - kept)).append(replacement);
        kept = match.range.end;
    }
    return result.append(text.substr(kept));
}

} // namespace quorvell
