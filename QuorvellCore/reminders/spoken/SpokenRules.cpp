// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/spoken/SpokenRules.h"

#include "QuorvellCore/reminders/spoken/TokenReplacement.h"
#include "QuorvellCore/reminders/wording/TimeTerms.h"

namespace quorvell {

namespace {

using Kind = RequestToken::Kind;
using Terms = WordTerms;

class SpokenRules {
public:
    explicit SpokenRules(const RequestTokens& tokens)
        : m_tokens(tokens)
    {
    }

    std::vector<TokenReplacement> find() const
    {
        std::vector<TokenReplacement> found;
        for (int index = 0; index < m_tokens.size();) {
            const auto rule = m_tokens.isOpen(index) ? at(index) : std::nullopt;
            if (rule)
                found.push_back(*rule);
            index = rule ? rule->end : index + 1;
        }
        return found;
    }

private:
    using Rule = std::optional<TokenReplacement>;

    Rule at(int index) const
    {
        for (const auto rule : {&SpokenRules::workdays, &SpokenRules::once, &SpokenRules::adverb,
                 &SpokenRules::yearlyDate, &SpokenRules::startOfMonths})
            if (auto found = (this->*rule)(index))
                return found;
        return std::nullopt;
    }

    bool is(int index, RequestTokens::Words words) const { return m_tokens.is(index, words); }
    bool has(int index, std::uint32_t anyOf) const { return m_tokens.has(index, anyOf); }
    bool isMonday(int index) const { return is(index, {"monday", "mon", "mondays"}); }
    bool isFriday(int index) const { return is(index, {"friday", "fri", "fridays"}); }

    /// "on workdays", "every working day", "every monday to friday", "mondays to fridays", "each weekday".
    Rule workdays(int index) const
    {
        const bool isLed = is(index, {"on", "every", "each", "all"});
        const bool isEach = is(index, {"every", "each"});
        const int first = isLed ? index + 1 : index;
        if (is(first, {"workdays", "workday"}) && isLed)
            return TokenReplacement{index, first + 1, "every weekday"};
        if (is(first, {"working", "business", "work", "school"}) && isLed && is(first + 1, {isEach ? "day" : "days"}))
            return TokenReplacement{index, first + 2, "every weekday"};
        const bool isWeek = isMonday(first) && is(first + 1, {"to", "through", "thru", "-", "–", "till", "until"})
            && isFriday(first + 2);
        const bool isRule = isEach || is(first, {"mondays"}) || is(first + 2, {"fridays"});
        return isWeek && isRule ? Rule(TokenReplacement{index, first + 3, "every weekday"}) : std::nullopt;
    }

    /// "once a week", "once every month".
    Rule once(int index) const
    {
        const bool isOnce = is(index, {"once"}) && is(index + 1, {"a", "per", "every", "each"})
            && is(index + 2, {"day", "week", "month", "year"});
        return isOnce ? Rule(TokenReplacement{index, index + 3, "every " + std::string(m_tokens.token(index + 2).text)})
                      : std::nullopt;
    }

    /// "nightly at 10 pm", "annually on may 3".
    Rule adverb(int index) const
    {
        const bool isNightly = is(index, {"nightly"});
        const bool mayStand =
            !m_tokens.isInside(index + 1) || !TimeTerms::isOrdinary(m_tokens, index + 1) || index == m_tokens.start();
        if ((!isNightly && !is(index, {"annually"})) || !mayStand || has(index - 1, Terms::determiner))
            return std::nullopt;
        return TokenReplacement{index, index + 1, isNightly ? "every night" : "every year"};
    }

    /// "every june 3", "each 3rd of june".
    Rule yearlyDate(int index) const
    {
        if (!is(index, {"every", "each"}))
            return std::nullopt;
        const auto isNumber = [this](int at) {
            const Kind kind = m_tokens.token(at).kind;
            return kind == Kind::ordinal || (kind == Kind::number && m_tokens.token(at).text.size() <= 2);
        };
        const bool isMonthFirst = has(index + 1, Terms::month) && isNumber(index + 2);
        const int month = is(index + 2, {"of"}) ? index + 3 : index + 2;
        const bool isDayFirst = isNumber(index + 1) && has(month, Terms::month);
        return isMonthFirst || isDayFirst ? Rule(TokenReplacement{index, index + 1, "every year on"}) : std::nullopt;
    }

    /// The end of each month has no rule: a rule for the 31st would begin in a month that has it.
    Rule startOfMonths(int index) const
    {
        const int lead = is(index, {"at", "on"}) ? index + 1 : index;
        const int edge = is(lead, {"the"}) ? lead + 1 : lead;
        const bool isStart = is(edge, {"start", "beginning"}) || (is(edge, {"first"}) && is(edge + 1, {"day"}));
        const int of = is(edge, {"first"}) ? edge + 2 : edge + 1;
        return isStart && is(of, {"of"}) && is(of + 1, {"every", "each"}) && is(of + 2, {"month"})
            ? Rule(TokenReplacement{index, of + 3, "every month on the 1st"})
            : std::nullopt;
    }

    const RequestTokens& m_tokens;
};

} // namespace

std::optional<std::string> withWrittenRules(const RequestWording& wording)
{
    return TokenReplacement::apply(wording, SpokenRules(wording.tokens()).find());
}

} // namespace quorvell
