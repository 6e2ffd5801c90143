// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/request/PassedOverRules.h"

#include "QuorvellCore/reminders/calendar/DecimalNumber.h"
#include "QuorvellCore/reminders/wording/RequestVocabulary.h"
#include "QuorvellCore/reminders/wording/TimeTerms.h"

#include <algorithm>

namespace quorvell {

namespace {

using Kind = RequestToken::Kind;
using Terms = WordTerms;
using About = PassedOverTime::About;

constexpr int hoursOfDay = 24;

} // namespace

PassedOverRules::PassedOverRules(const RequestTokens& tokens, const PhraseFindings& findings)
    : m_tokens(tokens)
    , m_hasDay(findings.day.has_value())
    , m_hasClock(findings.clock || findings.instant)
    , m_hasRule(findings.repeat.has_value())
{
}

PassedOverRules::Found PassedOverRules::timeAt(int index) const
{
    struct Rule {
        int (PassedOverRules::*length)(int) const;
        About about; ///< Of everything, the words themselves tell.
    };
    static constexpr Rule rules[] = {
        {&PassedOverRules::day, About::day},
        {&PassedOverRules::monthOrDate, About::day},
        {&PassedOverRules::clock, About::clock},
        {&PassedOverRules::bareHour, About::clock},
        {&PassedOverRules::laterToday, About::clock},
        {&PassedOverRules::vaguely, About::clock},
        {&PassedOverRules::duration, About::everything},
        {&PassedOverRules::bound, About::everything},
        {&PassedOverRules::span, About::everything},
        {&PassedOverRules::rule, About::everything},
        {&PassedOverRules::period, About::day},
        {&PassedOverRules::offset, About::everything},
        {&PassedOverRules::distance, About::everything},
        {&PassedOverRules::ordinal, About::day},
        {&PassedOverRules::feast, About::day},
        {&PassedOverRules::mealTime, About::clock},
        {&PassedOverRules::numericDate, About::day},
    };
    if (m_tokens.isDoubtful(index))
        return {1, is(index - 1, {"on", "the"}) && token(index).kind == Kind::clock ? About::day : About::everything};
    if (!has(index, Terms::passedOver))
        return {};
    if (token(index).meaning == RequestToken::Meaning::task)
        return {foreignDay(index), About::day};
    if (!isLeft(index))
        return {};
    for (const auto& [length, about] : rules)
        if (const int found = (this->*length)(index))
            return {found, about};
    return {};
}

/// "Prepare tomorrow's meeting at 5 pm" may be meant for today or for tomorrow.
int PassedOverRules::foreignDay(int index) const
{
    const std::string_view text = token(index).text;
    const std::string_view owner = text.substr(0, text.find_first_of("'\xE2"));
    const bool isOwner = owner.size() < text.size() && text.ends_with('s');
    const bool isAhead =
        (isOwner
            && (owner == "tomorrow" || owner == "tonight" || RequestVocabulary::termsOf(owner).has(Terms::weekday)))
        || is(index, {"tomorrows", "tonights"});
    return isAhead && !m_hasDay ? 1 : 0;
}

int PassedOverRules::day(int index) const
{
    const bool isLinked = is(index - 1, {"and", "or", "on", "until", "till", "to"});
    if (is(index, {"yesterday"}) && (isEdge(index) || isLinked))
        return 1;
    const bool isDay = (has(index, Terms::weekday) && !isWordOfTask(index))
        || has(index, Terms::pluralWeekday | Terms::relativeDay | Terms::almostDay);
    return isDay || is(index, {"eod", "noonish"}) || (is(index, {"everyday", "everynight"}) && isEdge(index)) ? 1 : 0;
}

bool PassedOverRules::isWordOfTask(int index) const
{
    return has(index, Terms::wordToo) && !has(index - 1, Terms::governsDay) && !is(index - 1, {"and", "or", ","});
}

/// First or last of what is no time.
bool PassedOverRules::isEdge(int index) const
{
    const auto isOther = [this](int other) { return m_tokens.isTime(other) || token(other).kind == Kind::mark; };
    int first = index - 1;
    int last = index + 1;
    while (first >= m_tokens.start() && isOther(first))
        --first;
    while (last < m_tokens.size() && isOther(last))
        ++last;
    return first < m_tokens.start() || last >= m_tokens.size();
}

/// "31 april", "in march"; not "march to the store" nor "call May".
int PassedOverRules::monthOrDate(int index) const
{
    if (isShortYear(index) || isBareDay(index))
        return 1;
    const bool isDayFirst = isNumber(index) && isMonth(is(index + 1, {"of"}) ? index + 2 : index + 1);
    if (isDayFirst)
        return is(index + 1, {"of"}) ? 3 : 2;
    if (!isMonth(index))
        return 0;
    if (isNumber(index + 1))
        return 2;
    const bool isLed =
        is(index - 1, {"in", "by", "until", "till", "before", "after", "since", "next", "this", "early", "late", "mid"})
        || (is(index - 1, {"of"})
            && is(index - 2, {"end", "beginning", "start", "middle", "first", "last", "day", "week", "half"}));
    return isLed ? 1 : 0;
}

/// "[5 march] 27", "[5 march] '27".
bool PassedOverRules::isShortYear(int index) const
{
    const int before = is(index - 1, {"'", "’"}) ? index - 2 : index - 1;
    const bool isBehindMonth = has(before, Terms::month) || has(before - 1, Terms::month);
    return token(index).kind == Kind::number && token(index).text.size() == 2 && m_tokens.isTime(before)
        && isBehindMonth;
}

/// "at 5 pm on 5", but not "on 5 shelves".
bool PassedOverRules::isBareDay(int index) const
{
    constexpr int lastOfMonth = 31;
    return token(index).kind == Kind::number && is(index - 1, {"on"})
        && decimalNumber(token(index).text).value_or(0) <= lastOfMonth && !TimeTerms::isOrdinary(m_tokens, index + 1)
        && TimeTerms::clockLength(m_tokens, index) == 0 && !is(index + 1, {"/", "-", "of"})
        && !has(index + 1, Terms::month);
}

bool PassedOverRules::isMonth(int index) const
{
    return isLeft(index) && has(index, Terms::month);
}

bool PassedOverRules::isNumber(int index) const
{
    return isLeft(index)
        && (token(index).kind == Kind::ordinal || (token(index).kind == Kind::number && token(index).text.size() <= 2));
}

/// A second time, or one that no clock shows: "at 8 am and 8 pm", "at 25:00".
int PassedOverRules::clock(int index) const
{
    const int length = TimeTerms::clockLength(m_tokens, index);
    const bool isDotted = token(index).kind == Kind::clock && token(index).text.find('.') != std::string_view::npos;
    if (length > 0 && !(isDotted && length == 1 && token(index).text.find('m') == std::string_view::npos))
        return length;
    if (is(index, {"o'clock", "oclock", "o’clock"}))
        return 1;
    const bool isHalf =
        is(index, {"half"}) && (isNumber(index + 1) || has(index + 1, Terms::number)) && !is(index + 1, {"a", "an"});
    if (isHalf)
        return 2;
    const bool isLed = is(index, {"at", "by", "@"}) && isLeft(index + 1);
    const bool isHour = token(index + 1).kind == Kind::number && token(index + 1).text.size() <= 2
        && !TimeTerms::isOrdinary(m_tokens, index + 2);
    return isLed && (isHour || isHourAbroad(token(index + 1).text) || isMilitary(token(index + 1).text))
        ? 1 + std::max(TimeTerms::clockLength(m_tokens, index + 1), 1)
        : 0;
}

/// "1730"
bool PassedOverRules::isMilitary(std::string_view text)
{
    constexpr int latest = 2359;
    constexpr int minutesOfHour = 60;
    const int number = text.size() == 4 ? decimalNumber(text).value_or(latest + 1) : latest + 1;
    return number <= latest && number % 100 < minutesOfHour;
}

/// "18h", "18h30", "5ish".
bool PassedOverRules::isHourAbroad(std::string_view text)
{
    const auto digits = text.find_first_not_of("0123456789");
    if (digits == 0 || digits == std::string_view::npos || digits > 2)
        return false;
    const std::string_view rest = text.substr(digits);
    return rest == "ish" || (rest.front() == 'h' && rest.find_first_not_of("0123456789", 1) == std::string_view::npos);
}

/// "tomorrow 5 call mum": perhaps at five, perhaps five of them.
int PassedOverRules::bareHour(int index) const
{
    const bool isHour =
        token(index).kind == Kind::number && decimalNumber(token(index).text).value_or(hoursOfDay) < hoursOfDay;
    const bool isBehind = m_tokens.isTime(index - 1);
    const bool isAhead = m_tokens.isTime(index + 1)
        && !is(index - 1,
            {"chapter", "page", "room", "flat", "part", "episode", "version", "season", "level", "gate", "platform",
                "number", "no", "size", "step", "question", "exercise", "unit", "issue", "ticket"});
    return isHour && !m_hasClock && (isBehind || isAhead) ? 1 : 0;
}

int PassedOverRules::laterToday(int index) const
{
    return is(index, {"later"}) && is(index + 1, {"today"}) && !m_hasClock ? 1 : 0;
}

/// "before 5 pm", "until friday", "from the 10th", "between 5 and 6 pm".
int PassedOverRules::bound(int index) const
{
    const bool isBound = is(index,
        {"before", "after", "until", "till", "til", "since", "from", "between", "except", "excluding", "not", "within",
            "during", "starting", "beginning", "ending", "through", "thru", "following", "past", "last"});
    const int next = is(index + 1, {"the", "on"}) ? index + 2 : index + 1;
    const bool isNumberRange = is(index, {"between", "from"}) && isLeft(index + 1)
        && token(index + 1).kind == Kind::number && is(index + 2, {"to", "and", "-", "–", "till", "until"});
    if (isNumberRange)
        return 3;
    return isBound && m_tokens.isTime(next) ? 1 : 0;
}

/// "10 to [the 14th]", "[at 5] or 6", "2-[4 pm]", "[in a day] or two", "[in a week] and a half".
int PassedOverRules::span(int index) const
{
    const bool isLink = is(index, {"to", "and", "or", "-", "–", "/", "&", "through", "till", "until"});
    if (!isLink)
        return 0;
    const auto isPoint = [this](int other) {
        return isNumber(other) || token(other).kind == Kind::clock || has(other, Terms::weekday | Terms::part)
            || (has(other, Terms::number) && !is(other, {"a", "an"}));
    };
    const bool isHalf = is(index, {"and"}) && is(index + 1, {"a"}) && is(index + 2, {"half", "quarter"});
    const int next = is(index + 1, {"the", "on", "at"}) ? index + 2 : index + 1;
    if (m_tokens.isTime(index - 1) && (isHalf || (isLeft(next) && isPoint(next) && !isSomethingCounted(next))))
        return next - index + std::max(TimeTerms::clockLength(m_tokens, next), 1);
    const bool isEither = is(index, {"/"}) && m_tokens.isTime(index - 1) && !token(index).followsSpace;
    if (isEither) // "every week/month"
        return 1;
    if (m_tokens.isTime(index - 1) && is(index, {"or"}) && is(index + 1, {"so", "later", "earlier"}))
        return 2;
    return m_tokens.isTime(next) && isLeft(index - 1) && isPoint(index - 1) ? 1 : 0;
}

/// "and 2 friends" goes on with the task.
bool PassedOverRules::isSomethingCounted(int index) const
{
    return token(index).kind == Kind::number && TimeTerms::isOrdinary(m_tokens, index + 1);
}

/// "every other monday", "every 3 days", "every weekend", "twice a day".
int PassedOverRules::rule(int index) const
{
    const auto isRhythm = [this](int other) {
        return has(other, Terms::unit | Terms::weekday | Terms::part) || m_tokens.isTime(other)
            || is(other, {"quarter", "hourly", "few", "couple"});
    };
    if (is(index, {"every", "each"})) {
        const bool isCounted = isNumber(index + 1) || has(index + 1, Terms::number)
            || is(index + 1, {"other", "second", "third", "fourth", "few", "couple", "single", "last", "first"});
        if (isCounted)
            return isLeft(index + 2) && isRhythm(index + 2) ? 3 : isRhythm(index + 2) || isNumber(index + 1) ? 2 : 0;
        return isRhythm(index + 1) ? 2 : 0;
    }
    const bool isTimes = is(index, {"once", "twice", "times"}) && is(index + 1, {"a", "per", "every", "each"})
        && is(index + 2, {"day", "week", "month", "year", "hour"});
    if (isTimes)
        return 3;
    const bool isRepeated = is(index, {"repeat", "recur"}) && is(index - 1, {"to"}) && index > m_tokens.start();
    if (isRepeated && isEdge(index) && !m_hasRule) // "and set it to repeat"
        return 1;
    // "The quarterly review", "an event called Quarterly Numbers".
    const bool isName = TimeTerms::isOrdinary(m_tokens, index + 1)
        && (has(index - 1, Terms::determiner) || (token(index).hasCapital && index > m_tokens.start()));
    return !isName && is(index, {"hourly", "fortnightly", "biweekly", "quarterly", "bimonthly", "annually"}) ? 1 : 0;
}

/// "this weekend", "next month", "the end of the week".
int PassedOverRules::period(int index) const
{
    const int day = is(index + 2, {"the"}) ? index + 3 : index + 2;
    if (is(index, {"week"}) && is(index + 1, {"of"}) && m_tokens.isTime(day)) // "in the week of the 5th"
        return 2;
    const bool isPeriod = is(index + 1, {"week", "weekend", "month", "year", "quarter"});
    const bool isPlan = is(index - 1, {"for", "about", "of"}) && m_hasDay;
    if (isPeriod && is(index, {"this", "next", "coming", "following"}) && isLeft(index + 1))
        return isPlan ? 0 : 2;
    const bool isWeekend = is(index, {"weekend", "weekends"}) && is(index - 1, {"the", "at", "on", "over"})
        && !TimeTerms::isOrdinary(m_tokens, index + 1) && !isPlan && !is(index - 2, {"for", "about", "of"});
    if (isWeekend)
        return 1;
    const bool isEnd = is(index, {"end", "start", "beginning", "middle"}) && is(index + 1, {"of"});
    const int unit = is(index + 2, {"the", "this", "next", "each", "every"}) ? index + 3 : index + 2;
    const bool isOfPeriod = is(unit, {"day", "week", "weekend", "month", "year", "quarter"})
        || (is(unit - 1, {"of"}) && m_tokens.isTime(unit));
    return isEnd && isOfPeriod ? unit - index + 1 : 0;
}

/// "in 5 or 6 days", "in a month", "for 3 days" of something that repeats.
int PassedOverRules::offset(int index) const
{
    constexpr int longest = 6;
    const bool isCount = isNumber(index + 1) || has(index + 1, Terms::number) || token(index + 1).kind == Kind::figures
        || token(index + 1).kind == Kind::clock
        || is(index + 1, {"half", "about", "around", "less", "exactly", "another", "few", "couple"});
    if (!is(index, {"in"}) || !isCount)
        return 0;
    for (int unit = index + 2; unit <= index + longest; ++unit)
        if (isLeft(unit) && has(unit, Terms::unit))
            return unit - index + 1;
    return is(index + 1, {"a"}) && is(index + 2, {"while", "bit", "moment"}) ? 3 : 0;
}

/// "an hour before my appointment", "two days after [tomorrow]", "a week [on friday]", "[friday] week".
int PassedOverRules::distance(int index) const
{
    if (isCount(index) && isLeft(index + 1) && has(index + 1, Terms::unit) && isBeforeAfter(index + 2))
        return 3;
    if (!has(index, Terms::unit) && !is(index, {"seconds", "secs"}))
        return 0;
    const bool isCounted = isCount(index - 1);
    const bool isWeekOn = is(index, {"week", "weeks", "fortnight"})
        && (isCounted ? m_tokens.isTime(index + 1) : m_tokens.isTime(index - 1) && isEdge(index));
    const bool isFrom = isBeforeAfter(index + 1) && is(index - 1, {"the"});
    const bool isSeconds =
        is(index, {"seconds", "secs"}) && isNumber(index - 1) && (m_tokens.isTime(index - 2) || is(index - 2, {"in"}));
    return isFrom || isWeekOn || isSeconds ? 1 : 0;
}

bool PassedOverRules::isCount(int index) const
{
    return isLeft(index) && (has(index, Terms::number) || isNumber(index));
}

bool PassedOverRules::isBeforeAfter(int index) const
{
    return is(index, {"before", "after", "prior", "ahead", "from", "earlier"});
}

/// "the 5th", "the first monday", "the last day of".
int PassedOverRules::ordinal(int index) const
{
    if (token(index).kind == Kind::ordinal)
        return is(index - 1, {"the", "on", "and", "or", "to"}) ? 1 : 0;
    const bool isPlace = has(index, Terms::ordinal) || is(index, {"last"});
    const bool isOfWeekday = m_tokens.isTime(index + 1) || is(index + 1, {"day", "weekday"});
    const bool isDate =
        is(index - 1, {"the"}) && is(index - 2, {"on", "by", "until"}) && !TimeTerms::isOrdinary(m_tokens, index + 1);
    // "First saturday of every month": no rule can say it, and the saturday alone is another day.
    const bool isOfMonths = isOfWeekday && is(index + 2, {"of", "in"}) && is(index + 3, {"every", "each", "the"});
    return isPlace && (isDate || isOfMonths || (isOfWeekday && is(index - 1, {"the", "every", "each"}))) ? 1 : 0;
}

int PassedOverRules::feast(int index) const
{
    const int name =
        is(index + 1, {"my", "his", "her", "their", "our", "new", "the", "good", "black"}) ? index + 2 : index + 1;
    const bool isFeast = is(name,
        {"christmas", "xmas", "easter", "halloween", "thanksgiving", "hanukkah", "ramadan", "diwali", "birthday",
            "anniversary", "year's", "years", "valentine's", "valentines", "payday", "holidays"});
    const int last = is(name + 1, {"eve", "day", "week"}) ? name + 1 : name;
    return is(index, {"on", "at", "by", "before", "after", "until", "over"}) && isFeast ? last - index + 1 : 0;
}

/// "20/3/2027", "20.3.2027", "on 5/12": nobody can say which is the month.
int PassedOverRules::numericDate(int index) const
{
    const bool isSlashed = isNumber(index) && is(index + 1, {"/", "-"}) && !token(index + 1).followsSpace
        && token(index + 2).kind == Kind::number;
    const bool isWhole = isSlashed && is(index + 3, {"/", "-"}) && token(index + 4).kind == Kind::number;
    if (isWhole)
        return 5;
    const int before = is(index - 1, {"the"}) ? index - 2 : index - 1;
    const bool isLedByDay = is(before, {"on", "by", "until", "till", "before", "from", "due"});
    return isSlashed && is(index + 1, {"/"}) && isLedByDay ? 3 : 0;
}

} // namespace quorvell
