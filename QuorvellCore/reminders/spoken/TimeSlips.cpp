// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/spoken/TimeSlips.h"

#include "QuorvellCore/reminders/spoken/TokenReplacement.h"
#include "QuorvellCore/reminders/wording/TimeTerms.h"
#include "QuorvellCore/reminders/wording/WordSlips.h"

namespace quorvell {

namespace {

using Kind = RequestToken::Kind;
using Terms = WordTerms;

class TimeSlips {
public:
    explicit TimeSlips(const RequestTokens& tokens)
        : m_tokens(tokens)
    {
        for (int index = 0; index < tokens.size(); ++index)
            m_hasDay = m_hasDay || tokens.has(index, Terms::relativeDay | Terms::pluralWeekday)
                || (tokens.has(index, Terms::weekday) && !tokens.has(index, Terms::wordToo));
    }

    std::vector<TokenReplacement> find() const
    {
        std::vector<TokenReplacement> found;
        for (int index = 0; index < m_tokens.size(); ++index) {
            const bool isKnown = !m_tokens.isOpen(index) || m_tokens.token(index).kind != Kind::word
                || has(index, Terms::weekday | Terms::part | Terms::unit);
            const std::string_view meant = isKnown ? std::string_view() : at(index);
            if (!meant.empty())
                found.push_back({index, index + 1, std::string(meant)});
        }
        return found;
    }

private:
    bool is(int index, RequestTokens::Words words) const { return m_tokens.is(index, words); }
    bool has(int index, std::uint32_t anyOf) const { return m_tokens.has(index, anyOf); }

    std::string_view at(int index) const
    {
        const std::string_view word = m_tokens.token(index).text;
        if (has(index, Terms::almostDay) && !has(index, Terms::notTime) && mayBeDay(index))
            return WordSlips::day(word);
        if (!has(index, Terms::month) && isBesideNumber(index))
            if (const auto name = WordSlips::month(word); !name.empty())
                return name;
        if (is(index - 1, {"the", "this", "in"}) || isDay(index - 1))
            return WordSlips::part(word);
        const bool isCounted = m_tokens.token(index - 1).kind == Kind::number || has(index - 1, Terms::number);
        return isCounted && is(index - 2, {"in", "for", "after", "twenty", "thirty", "forty", "fifty"})
            ? WordSlips::unit(word)
            : std::string_view();
    }

    bool isDay(int index) const
    {
        return has(index, Terms::relativeDay | Terms::weekday) || has(index, Terms::almostDay);
    }

    /// "On wensday", "frday 5 pm"; alone where no other day is named.
    bool mayBeDay(int index) const
    {
        const bool isLed = has(index - 1, Terms::governsDay) || TimeTerms::isTimeLike(m_tokens, index - 1)
            || TimeTerms::isTimeLike(m_tokens, index + 1);
        return isLed || !m_hasDay;
    }

    bool isBesideNumber(int index) const
    {
        const auto isNumber = [this](int other) {
            return m_tokens.token(other).kind == Kind::number || m_tokens.token(other).kind == Kind::ordinal
                || has(other, Terms::ordinal);
        };
        return isNumber(index - 1) || isNumber(index + 1) || (is(index - 1, {"of"}) && isNumber(index - 2));
    }

    const RequestTokens& m_tokens;
    bool m_hasDay = false;
};

} // namespace

std::optional<std::string> withoutTimeSlips(const RequestWording& wording)
{
    return TokenReplacement::apply(wording, TimeSlips(wording.tokens()).find());
}

} // namespace quorvell
