// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/spoken/FigureDates.h"

#include "QuorvellCore/reminders/calendar/DaySearch.h"
#include "QuorvellCore/reminders/calendar/DecimalNumber.h"
#include "QuorvellCore/reminders/spoken/TokenReplacement.h"
#include "QuorvellCore/reminders/wording/TimeTerms.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace quorvell {

namespace {

using Kind = RequestToken::Kind;
using Terms = WordTerms;

enum class Order { unknown, dayFirst, monthFirst };

/// Nearly all of the world writes the day first. English of the United States is the language of many computers
/// elsewhere, so that only a zone of America tells that the month comes first.
Order orderOf(const Calendar& calendar)
{
    constexpr std::array monthFirstOrMixed{"US", "CA", "PH", "CN", "TW", "JP", "KR", "HU", "LT", "MN"};
    const std::string& locale = calendar.locale();
    const auto line = locale.find('_');
    const std::string territory = line == std::string::npos ? std::string() : locale.substr(line + 1, 2);
    if (territory == "US" && calendar.zone().starts_with("America/"))
        return Order::monthFirst;
    const bool isKnown =
        territory.size() == 2 && std::ranges::find(monthFirstOrMixed, territory) == monthFirstOrMixed.end();
    return isKnown ? Order::dayFirst : Order::unknown;
}

/// The numbers of a date as they stand, and the tokens that they are in.
struct Figures {
    int first = 0;
    int second = 0;
    int year = 0; ///< 0 for none.
    int end = 0; ///< The token behind them.
    bool isDotted = false;
};

struct Found {
    int first = 0;
    int end = 0; ///< The token behind it.
    std::string lead; ///< Before each of the days.
    std::vector<LocalDay> days; ///< One; or, with the day first and with the month first, two that may be meant.
};

std::string isoDay(LocalDay day)
{
    const std::chrono::year_month_day date(day);
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02u", static_cast<int>(date.year()),
        static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
    return text.data();
}

class FigureFinder {
public:
    FigureFinder(const RequestTokens& tokens, Instant now, const Calendar& calendar)
        : m_tokens(tokens)
        , m_today(calendar.day(now))
        , m_order(orderOf(calendar))
    {
        for (int index = 0; index < tokens.size(); ++index)
            m_hasRelativeDay = m_hasRelativeDay || has(index, Terms::relativeDay);
    }

    std::vector<Found> find() const
    {
        std::vector<Found> found;
        for (int index = 0; index < m_tokens.size();) {
            const bool mayBegin = m_tokens.isOpen(index) && text(index).front() >= '0' && text(index).front() <= '9';
            auto date = mayBegin ? at(index) : std::nullopt;
            index = date ? date->end : index + 1;
            if (date)
                found.push_back(*std::move(date));
        }
        return found;
    }

private:
    bool is(int index, RequestTokens::Words words) const { return m_tokens.is(index, words); }
    bool has(int index, std::uint32_t anyOf) const { return m_tokens.has(index, anyOf); }
    std::string_view text(int index) const { return m_tokens.token(index).text; }
    Kind kind(int index) const { return m_tokens.token(index).kind; }
    bool isGlued(int index) const { return m_tokens.isInside(index) && !m_tokens.token(index).followsSpace; }

    std::optional<Found> at(int index) const
    {
        auto figures = withMarks(index);
        if (!figures)
            figures = withDots(index);
        if (!figures || !isDate(*figures, index))
            return std::nullopt;
        std::vector<LocalDay> days = daysOf(*figures, index);
        if (days.empty())
            return std::nullopt;
        const int article = is(index - 1, {"the"}) ? index - 1 : index;
        const bool isLed = is(article - 1, {"on", "for", "dated", "date", "@", "at"});
        const bool isBound = is(article - 1, {"by", "until", "till", "before", "after", "from", "since", "to", "due"});
        return Found{isLed || isBound ? article - (isLed ? 1 : 0) : index, figures->end, isBound ? "" : "on ", days};
    }

    std::optional<int> number(int index, std::size_t mostDigits) const
    {
        const bool isNumber = kind(index) == Kind::number && text(index).size() <= mostDigits;
        return isNumber ? decimalNumber(text(index)) : std::nullopt;
    }

    static int fullYear(int year)
    {
        constexpr int century = 2000;
        return year < 100 ? century + year : year;
    }

    /// "4/12", "4/12/27", "28-11-2026"; two numbers with a dash may be hours.
    std::optional<Figures> withMarks(int index) const
    {
        const auto isMark = [this](int mark) { return is(mark, {"/", "-"}) && isGlued(mark) && isGlued(mark + 1); };
        const auto first = number(index, 2);
        const auto second = isMark(index + 1) ? number(index + 2, 2) : std::nullopt;
        if (!first || !second || (is(index - 1, {"/", "-", "."}) && isGlued(index)))
            return std::nullopt;
        const bool goesOn = isMark(index + 3);
        const auto year = goesOn && text(index + 3) == text(index + 1) ? number(index + 4, 4) : std::nullopt;
        const bool isYear = year && (text(index + 4).size() == 2 || text(index + 4).starts_with("20"));
        if ((goesOn && !isYear) || (!goesOn && is(index + 1, {"-"})))
            return std::nullopt;
        return Figures{*first, *second, isYear ? fullYear(*year) : 0, index + (isYear ? 5 : 3), false};
    }

    /// "5.3.2027", "18.12."; "on 18.12" without the second dot.
    std::optional<Figures> withDots(int index) const
    {
        const std::string_view word = text(index);
        const auto dot = word.find('.');
        const auto last = word.rfind('.');
        if (dot == std::string_view::npos || word.find(':') != std::string_view::npos
            || is(index - 1, {"version", "release", "v", "section", "chapter"}))
            return std::nullopt;
        const auto part = [&](std::size_t start, std::size_t end) {
            return end - start <= 4 ? decimalNumber(word.substr(start, end - start)).value_or(0) : 0;
        };
        const int first = part(0, dot);
        if (kind(index) == Kind::figures && last != dot) {
            const std::size_t digits = word.size() - last - 1;
            const bool isYear = digits == 4 || digits == 2;
            return isYear && std::ranges::count(word, '.') == 2 ? std::optional(
                       Figures{first, part(dot + 1, last), fullYear(part(last + 1, word.size())), index + 1, true})
                                                                : std::nullopt;
        }
        const bool hasSecondDot = is(index + 1, {"."}) && isGlued(index + 1);
        const bool isFollowed = m_tokens.isInside(index + 2) && m_tokens.token(index + 2).followsSpace
            && !m_tokens.token(index + 2).hasCapital;
        const bool isOn = is(index - 1, {"on"}) || (is(index - 1, {"the"}) && is(index - 2, {"on"}));
        if ((kind(index) != Kind::clock && kind(index) != Kind::figures) || !((hasSecondDot && isFollowed) || isOn))
            return std::nullopt;
        return Figures{first, part(dot + 1, word.size()), 0, index + (hasSecondDot ? 2 : 1), true};
    }

    /// What stands around decides between a date and a share, a score or a name.
    bool isDate(const Figures& figures, int index) const
    {
        const int article = is(index - 1, {"the"}) ? index - 2 : index - 1;
        const bool isLed = is(article, {"on", "by", "until", "till", "before", "from", "since", "due", "dated", "date"})
            || has(article, Terms::weekday) || figures.year > 0 || figures.isDotted;
        const int end = figures.end;
        if (is(end, {"%", "of", "/", "-"}) || has(end, Terms::unit) || has(article, Terms::relativeDay))
            return false;
        if (isLed)
            return true;
        const bool isAtClock = is(end, {"at", "@", "from"}) || TimeTerms::clockLength(m_tokens, end) > 0
            || (is(end, {","}) && TimeTerms::isTimeLike(m_tokens, end + 1)) || has(end, Terms::weekday);
        constexpr int largestShare = 8;
        const bool isShare = figures.first < figures.second && figures.second <= largestShare;
        const bool isName = (figures.first == 24 && figures.second == 7) || (figures.first == 9 && figures.second == 11)
            || (figures.first == 7 && figures.second == 11);
        if (m_hasRelativeDay || ((isShare || isName) && !isAtClock))
            return false;
        constexpr int mostPoints = 10; // "8/10": so many of ten.
        const bool isScore = figures.second == mostPoints && figures.first <= mostPoints;
        const bool isMeasure = is(end,
            {"cup", "cups", "tsp", "tbsp", "teaspoon", "tablespoon", "inch", "inches", "mile", "miles", "pint", "pints",
                "litre", "liter", "kg", "lb", "lbs", "oz", "pound", "pounds", "share", "size", "scale", "time",
                "stars"});
        return isAtClock || !TimeTerms::isOrdinary(m_tokens, end) || (!isShare && !isName && !isScore && !isMeasure);
    }

    /// 1 = Sunday to 7 = Saturday, of a weekday beside the figures.
    std::optional<int> weekdayBeside(const Figures& figures, int index) const
    {
        for (const int beside : {index - 1, is(index - 1, {",", "the"}) ? index - 2 : index - 1, figures.end,
                 is(figures.end, {",", "("}) ? figures.end + 1 : figures.end})
            if (const auto weekday = m_tokens.token(beside).terms.valueOf(Terms::weekday))
                return weekday;
        return std::nullopt;
    }

    std::vector<LocalDay> daysOf(const Figures& figures, int index) const
    {
        const auto day = [&](int dayOfMonth, int month) {
            return figures.year > 0 ? Calendar::dayOf(figures.year, month, dayOfMonth)
                                    : nextDate(month, dayOfMonth, m_today);
        };
        const auto dayFirst = day(figures.first, figures.second);
        const auto monthFirst = day(figures.second, figures.first);
        if (!dayFirst || !monthFirst || *dayFirst == *monthFirst)
            return dayFirst ? std::vector{*dayFirst} : monthFirst ? std::vector{*monthFirst} : std::vector<LocalDay>();
        if (const auto weekday = weekdayBeside(figures, index)) {
            const bool isDayFirst = Calendar::weekday(*dayFirst) == *weekday;
            if (isDayFirst != (Calendar::weekday(*monthFirst) == *weekday))
                return {isDayFirst ? *dayFirst : *monthFirst};
        }
        // Nobody who writes dots puts the month first.
        if (m_order == Order::dayFirst || (m_order == Order::unknown && figures.isDotted))
            return {*dayFirst};
        if (m_order == Order::monthFirst)
            return {*monthFirst};
        return {*dayFirst, *monthFirst};
    }

    const RequestTokens& m_tokens;
    LocalDay m_today;
    Order m_order;
    bool m_hasRelativeDay = false;
};

/// Most words hold no such figures.
bool mayHoldDate(std::string_view words)
{
    const auto isDigit = [](char letter) { return letter >= '0' && letter <= '9'; };
    for (std::size_t place = 1; place + 1 < words.size(); ++place)
        if ((words[place] == '/' || words[place] == '-' || words[place] == '.') && isDigit(words[place - 1])
            && isDigit(words[place + 1]))
            return true;
    return false;
}

std::vector<Found> datesIn(const RequestWording& wording, Instant now, const Calendar& calendar)
{
    if (!mayHoldDate(wording.text()))
        return {};
    return FigureFinder(wording.tokens(), now, calendar).find();
}

} // namespace

std::optional<std::string> FigureDates::written(const RequestWording& wording, Instant now, const Calendar& calendar)
{
    std::vector<TokenReplacement> replacements;
    for (const Found& date : datesIn(wording, now, calendar))
        if (date.days.size() == 1)
            replacements.push_back({date.first, date.end, date.lead + isoDay(date.days.front())});
    return TokenReplacement::apply(wording, replacements);
}

std::vector<std::string> FigureDates::either(const RequestWording& wording, Instant now, const Calendar& calendar)
{
    std::vector<TokenReplacement> dayFirst;
    std::vector<TokenReplacement> monthFirst;
    for (const Found& date : datesIn(wording, now, calendar)) {
        if (date.days.size() < 2)
            continue;
        dayFirst.push_back({date.first, date.end, date.lead + isoDay(date.days.front())});
        monthFirst.push_back({date.first, date.end, date.lead + isoDay(date.days.back())});
    }
    const auto first = TokenReplacement::apply(wording, dayFirst);
    const auto second = TokenReplacement::apply(wording, monthFirst);
    return first && second ? std::vector{*first, *second} : std::vector<std::string>();
}

} // namespace quorvell
