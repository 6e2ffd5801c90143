// SPDX-License-Identifier: MIT
#include "QuorvellCore/safety/words/LanguageMatcher.h"

#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <array>
#include <cstdint>

namespace quorvell {

namespace {

std::string utf8Of(const icu::UnicodeString& text)
{
    std::string bytes;
    return text.toUTF8String(bytes);
}

icu::UnicodeString withoutAccents(const icu::UnicodeString& text)
{
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* form = icu::Normalizer2::getNFDInstance(status);
    const icu::UnicodeString apart = form ? form->normalize(text, status) : text;
    icu::UnicodeString kept;
    for (std::int32_t index = 0; index < apart.length(); index += U16_LENGTH(apart.char32At(index))) {
        if (u_charType(apart.char32At(index)) != U_NON_SPACING_MARK)
            kept.append(apart.char32At(index));
    }
    return kept;
}

/// Beside the word itself: what is left of its capitals, and what is written where accents are too much trouble. Short
/// words without theirs are other words.
void addForms(std::vector<std::string>& words, std::string_view word, const icu::Locale& locale)
{
    constexpr std::int32_t shortestWithoutAccents = 5; // Letters.
    words.emplace_back(word);
    const auto written = icu::UnicodeString::fromUTF8({word.data(), static_cast<std::int32_t>(word.size())});
    icu::UnicodeString capitals = written;
    words.push_back(utf8Of(capitals.toUpper(locale).toLower(icu::Locale::getRoot())));
    // Romanian is written with cedillas as often as with its own commas.
    icu::UnicodeString cedillas = written;
    cedillas.findAndReplace(u"ș", u"ş").findAndReplace(u"ț", u"ţ");
    if (cedillas != written)
        words.push_back(utf8Of(cedillas));
    const icu::UnicodeString plain = withoutAccents(written);
    if (plain.length() >= shortestWithoutAccents)
        words.push_back(utf8Of(plain));
}

void addList(std::vector<std::string>& words, std::string_view list, const char* locale)
{
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(','), list.size());
        addForms(words, list.substr(0, end), icu::Locale(locale));
        list.remove_prefix(std::min(end + 1, list.size()));
    }
}

constexpr auto noEnding = std::to_array<std::string_view>({""});

} // namespace

LanguageMatcher::LanguageMatcher(std::span<const Language> languages, WordMatcher::Bounds bounds)
    : LanguageMatcher(wordsOf(languages), bounds)
{
}

LanguageMatcher::LanguageMatcher(const Words& words, WordMatcher::Bounds bounds)
    : m_acting(words.acting)
    , m_matcher(std::vector<std::string_view>(words.all.begin(), words.all.end()), noEnding, bounds)
{
}

LanguageMatcher::Words LanguageMatcher::wordsOf(std::span<const Language> languages)
{
    Words words;
    for (const Language& language : languages)
        addList(words.all, language.acting, language.locale);
    words.acting = words.all.size();
    for (const Language& language : languages)
        addList(words.all, language.agreeing, language.locale);
    return words;
}

std::optional<LabelMeaning> LanguageMatcher::meaningOf(const JudgedText& label) const
{
    const auto word = m_matcher.firstIn(label);
    if (!word)
        return std::nullopt;
    return *word < m_acting ? LabelMeaning::acting : LabelMeaning::agreeing;
}

} // namespace quorvell
