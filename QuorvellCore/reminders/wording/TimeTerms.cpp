// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/wording/TimeTerms.h"

namespace quorvell {

namespace {

using Kind = RequestToken::Kind;

} // namespace

int TimeTerms::clockLength(const RequestTokens& tokens, int index)
{
    const RequestToken& token = tokens.token(index);
    if (token.terms.has(WordTerms::noon))
        return 1;
    const bool isClock = token.kind == Kind::clock;
    if (!isClock && (token.kind != Kind::number || token.text.size() > 2))
        return 0;
    return tokens.token(index + 1).terms.has(WordTerms::marker) ? 2 : isClock ? 1 : 0;
}

bool TimeTerms::isTimeLike(const RequestTokens& tokens, int index)
{
    const RequestToken& token = tokens.token(index);
    const WordTerms& terms = token.terms;
    return token.kind == Kind::number || token.kind == Kind::ordinal || token.kind == Kind::clock
        || terms.has(
            WordTerms::month | WordTerms::relativeDay | WordTerms::part | WordTerms::noon | WordTerms::besideTime)
        || (terms.has(WordTerms::weekday) && !terms.has(WordTerms::wordToo));
}

bool TimeTerms::isOrdinary(const RequestTokens& tokens, int index)
{
    const RequestToken& token = tokens.token(index);
    return token.kind == Kind::word && !token.terms.has(WordTerms::link) && !isTimeLike(tokens, index);
}

} // namespace quorvell
