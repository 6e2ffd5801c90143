// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/spoken/TokenLength.h"

#include "QuorvellCore/reminders/calendar/DecimalNumber.h"
#include "QuorvellCore/reminders/spoken/TokenNumber.h"

namespace quorvell {

namespace {

using Kind = RequestToken::Kind;
using Terms = WordTerms;

constexpr int minutesOfHour = 60;
constexpr int minutesOfDay = TokenLength::minutesOfDay;
constexpr int daysOfWeek = 7;

/// A number with what belongs to it, in quarters: "one and a half" is 6.
struct Quantity {
    int quarters = 0;
    int end = 0;
};

class LengthReader {
public:
    explicit LengthReader(const RequestTokens& tokens)
        : m_tokens(tokens)
    {
    }

    /// "2", "1.5", "twenty five", "an", "half an", "a quarter of an", "two and a half".
    std::optional<Quantity> quantity(int index) const
    {
        if (is(index, {"a"}) && is(index + 1, {"couple"}))
            return Quantity{8, is(index + 2, {"of"}) ? index + 3 : index + 2};
        if (is(index, {"a"}) && is(index + 1, {"half", "quarter"}))
            ++index;
        if (is(index, {"half", "quarter"})) {
            const int of = is(index + 1, {"of"}) ? index + 2 : index + 1;
            if (is(of, {"a", "an"}))
                return Quantity{is(index, {"half"}) ? 2 : 1, of + 1};
            return std::nullopt;
        }
        if (is(index, {"three"}) && is(index + 1, {"quarters"}) && is(index + 2, {"of"}) && is(index + 3, {"an"}))
            return Quantity{3, index + 4};
        if (text(index).ends_with(".5") && text(index).size() == 3)
            return Quantity{4 * (text(index).front() - '0') + 2, index + 1};
        auto number = wholeNumber(index);
        if (number && is(number->end, {"and"}) && is(number->end + 1, {"a"}) && is(number->end + 2, {"half"}))
            number = Quantity{number->quarters + 2, number->end + 3};
        return number;
    }

    std::optional<Quantity> wholeNumber(int index) const
    {
        const auto number = TokenNumber::cardinal(m_tokens, index);
        return number ? std::optional(Quantity{4 * number->value, number->end}) : std::nullopt;
    }

    static int minutesOf(std::string_view unit)
    {
        if (unit.starts_with("min"))
            return 1;
        if (unit.starts_with("h"))
            return minutesOfHour;
        if (unit.starts_with("day"))
            return minutesOfDay;
        if (unit == "week" || unit == "weeks")
            return daysOfWeek * minutesOfDay;
        return unit.starts_with("fortnight") ? 2 * daysOfWeek * minutesOfDay : 0; // A month has no length.
    }

    /// "two hours and a half", "30 minutes".
    std::optional<TokenLength> oneLength(int index) const
    {
        if (const int minutes = gluedMinutes(index); minutes > 0)
            return TokenLength{minutes, index + 1, false};
        const auto count = quantity(index);
        const int unit = count && has(count->end, Terms::unit) ? minutesOf(text(count->end)) : 0;
        if (unit == 0)
            return std::nullopt;
        int quarters = count->quarters;
        int end = count->end + 1;
        const bool hasFraction = is(end, {"and"}) && is(end + 1, {"a"}) && is(end + 2, {"half", "quarter"});
        if (hasFraction && !has(end + 3, Terms::unit)) {
            quarters += is(end + 2, {"half"}) ? 2 : 1;
            end += 3;
        }
        const bool isOfDays = unit >= minutesOfDay && quarters % 4 == 0;
        if ((unit >= minutesOfDay && !isOfDays) || (unit == 1 && quarters % 4 != 0))
            return std::nullopt;
        return TokenLength{quarters * unit / 4, end, isOfDays};
    }

    /// "90m", "2h", "1h30", in minutes; 0 for anything else.
    int gluedMinutes(int index) const
    {
        const std::string_view word = text(index);
        const auto unit = kind(index) == Kind::word ? word.find_first_not_of("0123456789") : std::string_view::npos;
        if (unit == 0 || unit == std::string_view::npos || unit > 3 || (word[unit] != 'h' && word[unit] != 'm'))
            return 0;
        const int count = decimalNumber(word.substr(0, unit)).value_or(0);
        std::string_view rest = word.substr(unit + 1);
        if (word[unit] == 'm')
            return rest.empty() ? count : 0;
        if (rest.ends_with('m'))
            rest.remove_suffix(1);
        const auto minutes = rest.empty() ? std::optional(0) : decimalNumber(rest);
        return minutes && *minutes < minutesOfHour ? count * minutesOfHour + *minutes : 0;
    }

    /// "2 hours and 30 minutes", "an hour and a half". Days do not mix with hours.
    std::optional<TokenLength> length(int index) const
    {
        constexpr int mostParts = 4;
        auto whole = oneLength(index);
        for (int part = 1; whole && part < mostParts; ++part) {
            const int next = is(whole->end, {"and", ","}) ? whole->end + 1 : whole->end;
            const auto more = oneLength(next);
            if (!more)
                break;
            if (more->isOfDays != whole->isOfDays)
                return std::nullopt;
            whole = TokenLength{whole->minutes + more->minutes, more->end, whole->isOfDays};
        }
        return whole && !whole->isOfDays ? withBareMinutes(*whole) : whole;
    }

    /// "two hours fifteen"
    TokenLength withBareMinutes(const TokenLength& hours) const
    {
        const bool isOfHours = is(hours.end - 1, {"hour", "hours"});
        const auto minutes = isOfHours ? TokenNumber::cardinal(m_tokens, hours.end) : std::nullopt;
        const bool isLast = minutes && !is(hours.end, {"a", "an"})
            && (!m_tokens.isInside(minutes->end) || kind(minutes->end) == Kind::mark
                || is(minutes->end, {"to", "from", "please"}));
        return isLast && minutes->value < minutesOfHour
            ? TokenLength{hours.minutes + minutes->value, minutes->end, false}
            : hours;
    }

private:
    bool is(int index, RequestTokens::Words words) const { return m_tokens.is(index, words); }
    bool has(int index, std::uint32_t anyOf) const { return m_tokens.has(index, anyOf); }
    std::string_view text(int index) const { return m_tokens.token(index).text; }
    Kind kind(int index) const { return m_tokens.token(index).kind; }

    const RequestTokens& m_tokens;
};

} // namespace

std::optional<TokenLength> TokenLength::at(const RequestTokens& tokens, int index)
{
    return LengthReader(tokens).length(index);
}

} // namespace quorvell
