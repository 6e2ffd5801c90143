// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/request/SaidDates.h"

#include "QuorvellCore/reminders/calendar/DaySearch.h"
#include "QuorvellCore/reminders/calendar/DecimalNumber.h"
#include "QuorvellCore/reminders/wording/TimeTerms.h"

#include <algorithm>

namespace quorvell {

namespace {

using Kind = RequestToken::Kind;
using Terms = WordTerms;
using std::chrono::days;

/// One naming of a day: the day itself, or only what it has to be.
struct Mention {
    int first = 0;
    int last = 0;
    std::optional<LocalDay> day; ///< Of a date and of "tomorrow".
    std::optional<int> weekday; ///< 1 = Sunday to 7 = Saturday.
    std::optional<int> dayOfMonth;
    bool isReadable = true; ///< By the patterns, when it stands alone.
    bool isImpossible = false; ///< 31 April.
};

int numberAt(const RequestTokens& tokens, int index)
{
    const std::string_view text = tokens.token(index).text;
    return decimalNumber(text.substr(0, text.find_first_not_of("0123456789"))).value_or(0);
}

bool isDayNumber(const RequestTokens& tokens, int index)
{
    const Kind kind = tokens.token(index).kind;
    return tokens.isOpen(index)
        && (kind == Kind::ordinal || (kind == Kind::number && tokens.token(index).text.size() <= 2));
}

bool isYear(const RequestTokens& tokens, int index)
{
    const RequestToken& token = tokens.token(index);
    constexpr std::size_t digits = 4;
    return token.kind == Kind::number && token.text.size() == digits && token.text.starts_with("20")
        && TimeTerms::clockLength(tokens, index) == 0;
}

Mention dated(int first, int last, std::optional<LocalDay> day)
{
    Mention mention{first, last, day, {}, {}, true, !day};
    return mention;
}

class Mentions {
public:
    Mentions(const RequestTokens& tokens, LocalDay today)
        : m_tokens(tokens)
        , m_today(today)
    {
    }

    std::vector<Mention> find() const
    {
        std::vector<Mention> found;
        for (int index = 0; index < m_tokens.size(); ++index) {
            auto mention = m_tokens.has(index, Terms::saidDate) && m_tokens.isOpen(index) ? at(index) : std::nullopt;
            if (!mention)
                continue;
            index = mention->last;
            extend(*mention, found.empty() ? -1 : found.back().last);
            found.push_back(*mention);
        }
        return found;
    }

private:
    std::optional<Mention> at(int index) const
    {
        if (auto mention = isoDate(index))
            return mention;
        if (auto mention = dayAndMonth(index))
            return mention;
        if (auto mention = monthAndDay(index))
            return mention;
        if (auto mention = namedDay(index))
            return mention;
        return dayOfMonth(index);
    }

    std::optional<Mention> isoDate(int index) const
    {
        const bool isShaped = isYear(m_tokens, index) && m_tokens.is(index + 1, {"-", "/"})
            && isDayNumber(m_tokens, index + 2) && m_tokens.token(index + 3).text == m_tokens.token(index + 1).text
            && isDayNumber(m_tokens, index + 4) && !m_tokens.token(index + 1).followsSpace;
        if (!isShaped)
            return std::nullopt;
        Mention mention = dated(index, index + 4,
            Calendar::dayOf(numberAt(m_tokens, index), numberAt(m_tokens, index + 2), numberAt(m_tokens, index + 4)));
        mention.isReadable = false;
        return mention;
    }

    std::optional<Mention> dayAndMonth(int index) const
    {
        const int monthIndex = m_tokens.is(index + 1, {"of"}) ? index + 2 : index + 1;
        if (!isDayNumber(m_tokens, index) || !isMonth(monthIndex))
            return std::nullopt;
        return inYear(index, monthIndex, monthIndex, index);
    }

    std::optional<Mention> monthAndDay(int index) const
    {
        const int dayIndex = m_tokens.is(index + 1, {"the"}) ? index + 2 : index + 1;
        const bool isTime = TimeTerms::clockLength(m_tokens, dayIndex) > 0; // "in march 5 pm" is no date.
        if (!isMonth(index) || !isDayNumber(m_tokens, dayIndex) || isTime)
            return std::nullopt;
        auto mention = inYear(index, dayIndex, index, dayIndex);
        mention.isReadable = mention.isReadable && dayIndex == index + 1;
        return mention;
    }

    bool isMonth(int index) const { return m_tokens.isOpen(index) && m_tokens.has(index, Terms::month); }

    Mention inYear(int first, int last, int monthIndex, int dayIndex) const
    {
        const int month = m_tokens.token(monthIndex).terms.valueOf(Terms::month).value_or(0);
        const int day = numberAt(m_tokens, dayIndex);
        const int yearIndex = m_tokens.is(last + 1, {",", "in", "of"}) ? last + 2 : last + 1;
        if (!isYear(m_tokens, yearIndex))
            return dated(first, last, nextDate(month, day, m_today));
        Mention mention = dated(first, yearIndex, Calendar::dayOf(numberAt(m_tokens, yearIndex), month, day));
        mention.isReadable = false;
        return mention;
    }

    std::optional<Mention> namedDay(int index) const
    {
        const std::string_view text = m_tokens.token(index).text;
        const bool isAfter =
            m_tokens.is(index, {"day"}) && m_tokens.is(index + 1, {"after"}) && m_tokens.is(index + 2, {"tomorrow"});
        if (isAfter)
            return Mention{index, index + 2, m_today + days(2), {}, {}, true, false};
        if (m_tokens.has(index, Terms::relativeDay))
            return Mention{
                index, index, m_today + days(text == "tomorrow" || text == "tmrw" ? 1 : 0), {}, {}, true, false};
        const auto weekday = m_tokens.token(index).terms.valueOf(Terms::weekday);
        const bool isRule = m_tokens.is(index - 1, {"every", "each"});
        return weekday && !isRule ? std::optional(Mention{index, index, {}, weekday, {}, true, false}) : std::nullopt;
    }

    std::optional<Mention> dayOfMonth(int index) const
    {
        const bool isDay = m_tokens.token(index).kind == Kind::ordinal && m_tokens.is(index - 1, {"the"});
        return isDay ? std::optional(Mention{index, index, {}, {}, numberAt(m_tokens, index), true, false})
                     : std::nullopt;
    }

    /// Takes in "on the" before a day, and what stands between it and the mention before.
    void extend(Mention& mention, int before) const
    {
        int first = mention.first;
        while (first - 1 > before && m_tokens.is(first - 1, {"on", "the", "next", "this", "coming"}))
            --first;
        int gap = first;
        while (gap - 1 > before && m_tokens.is(gap - 1, {",", "("}))
            --gap;
        mention.first = before >= 0 && gap - 1 == before ? gap : first;
        if (m_tokens.is(mention.last + 1, {")"}) && m_tokens.is(mention.first, {"("}))
            ++mention.last;
    }

    const RequestTokens& m_tokens;
    LocalDay m_today;
};

bool agrees(const Mention& mention, LocalDay day)
{
    const auto date = std::chrono::year_month_day(day);
    return (!mention.day || *mention.day == day) && (!mention.weekday || *mention.weekday == Calendar::weekday(day))
        && (!mention.dayOfMonth || *mention.dayOfMonth == static_cast<int>(static_cast<unsigned>(date.day())));
}

/// The day that the fullest of the mentions names.
std::optional<LocalDay> dayOf(const std::vector<Mention>& mentions, LocalDay today)
{
    for (const Mention& mention : mentions)
        if (mention.day)
            return mention.day;
    for (const Mention& mention : mentions)
        if (mention.dayOfMonth)
            return nextDayOfMonth(today, *mention.dayOfMonth);
    return std::nullopt;
}

} // namespace

SaidDates SaidDates::find(const RequestTokens& tokens, LocalDay today)
{
    const std::vector<Mention> mentions = Mentions(tokens, today).find();
    SaidDates said;
    const bool isSimple =
        mentions.empty() || (mentions.size() == 1 && mentions.front().isReadable && !mentions.front().isImpossible);
    if (isSimple)
        return said;
    const auto day = dayOf(mentions, today);
    const auto isWrong = [&](const Mention& mention) { return mention.isImpossible || !day || !agrees(mention, *day); };
    for (const Mention& mention : mentions)
        said.words.push_back(tokens.range(mention.first, mention.last));
    said.isContradiction = std::ranges::any_of(mentions, isWrong);
    if (!said.isContradiction)
        said.day = day;
    return said;
}

} // namespace quorvell
