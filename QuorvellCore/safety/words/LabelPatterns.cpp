// SPDX-License-Identifier: MIT
#include "QuorvellCore/safety/words/LabelPatterns.h"

#include "QuorvellCore/text/CodePoints.h"
#include "QuorvellCore/text/LowerCase.h"

#include <unicode/uchar.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>

namespace quorvell {

namespace {

constexpr auto currencyCodes = std::to_array<std::string_view>({"usd", "eur", "gbp", "inr"});
constexpr auto siteEndings = std::to_array<std::string_view>(
    {"com", "org", "net", "gov", "edu", "io", "co", "uk", "in", "np", "de", "fr", "au", "ca"});

bool isDigitOfAnyScript(char32_t point)
{
    return u_isdigit(static_cast<UChar32>(point));
}

bool isCurrencySign(char32_t point)
{
    return std::u32string_view(U"$£€₹¥").find(point) != std::u32string_view::npos;
}

/// A letter, digit, mark, underscore or a sign that nobody sees: no word ends before it.
bool isOfWord(char32_t point)
{
    const auto code = static_cast<UChar32>(point);
    return u_hasBinaryProperty(code, UCHAR_ALPHABETIC) || (U_MASK(u_charType(code)) & U_GC_M_MASK) != 0
        || isDigitOfAnyScript(point) || u_charType(code) == U_CONNECTOR_PUNCTUATION
        || u_charType(code) == U_FORMAT_CHAR;
}

bool isWordEnd(std::string_view text, std::size_t position)
{
    return position == text.size() || !isOfWord(nextCodePoint(text, position));
}

/// `position` moves behind one white space, if one stands there.
void skipOneSpace(std::string_view text, std::size_t& position)
{
    std::size_t next = position;
    if (next < text.size() && isWhiteSpace(nextCodePoint(text, next)))
        position = next;
}

bool isDigitAt(std::string_view text, std::size_t position)
{
    skipOneSpace(text, position);
    return position < text.size() && isDigitOfAnyScript(nextCodePoint(text, position));
}

bool isCurrencyCodeAt(std::string_view text, std::size_t position)
{
    skipOneSpace(text, position);
    return std::any_of(currencyCodes.begin(), currencyCodes.end(), [&](std::string_view code) {
        return text.substr(position).starts_with(code) && isWordEnd(text, position + code.size());
    });
}

bool isOfSiteName(char letter)
{
    return (letter >= 'a' && letter <= 'z') || (letter >= '0' && letter <= '9') || letter == '-';
}

/// Where the ending that stands at `position` ends; 0 where none does.
std::size_t siteEndingEnd(std::string_view text, std::size_t position)
{
    const auto found = std::find_if(siteEndings.begin(), siteEndings.end(), [&](std::string_view ending) {
        return text.substr(position).starts_with(ending) && isWordEnd(text, position + ending.size());
    });
    return found == siteEndings.end() ? 0 : position + found->size();
}

/// Whether a name ends before `end`: letters, digits and hyphens, with the edge of a word somewhere among them.
bool isNameBefore(std::string_view text, std::size_t end)
{
    while (end > 0 && isOfSiteName(text[end - 1])) {
        const bool isWord = text[end - 1] != '-';
        std::size_t before = --end;
        if (isWord != (before > 0 && isOfWord(previousCodePoint(text, before))))
            return true;
    }
    return false;
}

bool hasDigitsInARow(std::string_view text)
{
    constexpr int fewest = 6;
    int count = 0;
    for (std::size_t position = 0; position < text.size() && count < fewest;)
        count = isDigitOfAnyScript(nextCodePoint(text, position)) ? count + 1 : 0;
    return count == fewest;
}

std::string withoutEscapedDigits(std::string_view text)
{
    std::string plain;
    plain.reserve(text.size());
    for (std::size_t index = 0; index < text.size(); ++index) {
        const std::string_view rest = text.substr(index);
        if (rest.size() > 2 && rest.starts_with("%3") && rest[2] >= '0' && rest[2] <= '9')
            index += 2;
        plain += text[index];
    }
    return plain;
}

} // namespace

bool hasPrice(std::string_view lower)
{
    for (std::size_t position = 0; position < lower.size();) {
        const char32_t point = nextCodePoint(lower, position);
        if (isCurrencySign(point) ? isDigitAt(lower, position)
                                  : isDigitOfAnyScript(point) && isCurrencyCodeAt(lower, position))
            return true;
    }
    return false;
}

bool hasSiteName(std::string_view lower)
{
    for (std::size_t dot = lower.find('.'); dot != std::string_view::npos; dot = lower.find('.', dot + 1))
        if (siteEndingEnd(lower, dot + 1) != 0 && isNameBefore(lower, dot))
            return true;
    return false;
}

std::string withoutSiteNames(std::string_view label)
{
    const std::string lower = asciiLowerCased(label);
    std::string rest;
    std::size_t kept = 0; // What stands before it has been taken over, or was a site's name.
    for (std::size_t dot = lower.find('.'); dot != std::string::npos; dot = lower.find('.', dot + 1)) {
        const std::size_t end = siteEndingEnd(lower, dot + 1);
        if (end == 0 || !isNameBefore(lower, dot))
            continue;
        std::size_t start = dot;
        while (start > kept && isOfSiteName(lower[start - 1]))
            --start;
        (rest += label.substr(kept, start - kept)) += ' ';
        kept = end;
    }
    return rest.append(label.substr(kept));
}

bool hasLongNumber(std::string_view text)
{
    return hasDigitsInARow(text) || hasDigitsInARow(withoutEscapedDigits(text));
}

} // namespace quorvell
