// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/spoken/TokenNumber.h"

#include "QuorvellCore/reminders/calendar/DecimalNumber.h"

namespace quorvell {

namespace {

using Kind = RequestToken::Kind;
using Terms = WordTerms;

/// Behind "twenty", with or without a hyphen.
int indexOfOnes(const RequestTokens& tokens, int index)
{
    return tokens.is(index + 1, {"-"}) ? index + 2 : index + 1;
}

} // namespace

std::optional<TokenNumber> TokenNumber::cardinal(const RequestTokens& tokens, int index)
{
    constexpr std::size_t mostDigits = 4;
    const RequestToken& token = tokens.token(index);
    if (token.kind == Kind::number && token.text.size() <= mostDigits) {
        const auto value = decimalNumber(token.text);
        return value ? std::optional(TokenNumber{*value, index + 1}) : std::nullopt;
    }
    const auto number = token.terms.valueOf(Terms::number);
    if (!number)
        return std::nullopt;
    const int ones = indexOfOnes(tokens, index);
    const auto one =
        *number >= 20 && !tokens.is(ones, {"a", "an"}) ? tokens.token(ones).terms.valueOf(Terms::number) : std::nullopt;
    return one && *one < 10 ? TokenNumber{*number + *one, ones + 1} : TokenNumber{*number, index + 1};
}

std::optional<TokenNumber> TokenNumber::ordinal(const RequestTokens& tokens, int index)
{
    constexpr int longestMonth = 31;
    const RequestToken& token = tokens.token(index);
    if (token.kind == Kind::ordinal)
        return TokenNumber{decimalNumber(token.text.substr(0, token.text.size() - 2)).value_or(0), index + 1};
    if (const auto day = token.terms.valueOf(Terms::ordinal))
        return TokenNumber{*day, index + 1};
    const int tens = tokens.is(index, {"twenty"}) ? 20 : tokens.is(index, {"thirty"}) ? 30 : 0;
    const int ones = indexOfOnes(tokens, index);
    const auto one = tens > 0 ? tokens.token(ones).terms.valueOf(Terms::ordinal) : std::nullopt;
    const bool isDay = one && *one < 10 && tens + *one <= longestMonth;
    return isDay ? std::optional(TokenNumber{tens + *one, ones + 1}) : std::nullopt;
}

} // namespace quorvell
