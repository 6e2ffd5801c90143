// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/spoken/SpokenClocks.h"

#include "QuorvellCore/reminders/calendar/DecimalNumber.h"
#include "QuorvellCore/reminders/spoken/TokenNumber.h"
#include "QuorvellCore/reminders/spoken/TokenReplacement.h"
#include "QuorvellCore/reminders/wording/TimeTerms.h"

#include <array>
#include <cstdio>

namespace quorvell {

namespace {

using Kind = RequestToken::Kind;
using Terms = WordTerms;

constexpr int noonHour = 12;
constexpr int hoursInDay = 24;
constexpr int minutesOfClockHour = 60;

std::string clockText(int hour, int minute)
{
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%d:%02d", hour, minute);
    return text.data();
}

/// By a clock of 24 hours, so that an hour before noon is one of the morning.
std::string wholeDayClock(int hour, int minute)
{
    return clockText(hour, minute) + (hour < noonHour ? " am" : hour == noonHour ? " pm" : "");
}

class SpokenClocks {
public:
    explicit SpokenClocks(const RequestTokens& tokens)
        : m_tokens(tokens)
    {
        for (int index = 0; index < tokens.size(); ++index)
            m_hasClock = m_hasClock || TimeTerms::clockLength(tokens, index) > 0
                || (is(index, {"at"}) && tokens.token(index + 1).kind == Kind::number);
    }

    std::vector<TokenReplacement> find() const
    {
        std::vector<TokenReplacement> found;
        for (int index = 0; index < m_tokens.size();) {
            const auto clock = m_tokens.isOpen(index) ? at(index) : std::nullopt;
            if (clock)
                found.push_back(*clock);
            index = clock ? clock->end : index + 1;
        }
        return found;
    }

private:
    using Clock = std::optional<TokenReplacement>;

    Clock at(int index) const
    {
        for (const auto rule : {&SpokenClocks::fourDigits, &SpokenClocks::withZero, &SpokenClocks::glued,
                 &SpokenClocks::spacedDigits, &SpokenClocks::half, &SpokenClocks::smallHour, &SpokenClocks::endOfDay,
                 &SpokenClocks::firstThing, &SpokenClocks::sharp, &SpokenClocks::vague, &SpokenClocks::starting,
                 &SpokenClocks::earlyPart, &SpokenClocks::behindPart})
            if (auto clock = (this->*rule)(index))
                return clock;
        return std::nullopt;
    }

    bool is(int index, RequestTokens::Words words) const { return m_tokens.is(index, words); }
    bool has(int index, std::uint32_t anyOf) const { return m_tokens.has(index, anyOf); }
    std::string_view text(int index) const { return m_tokens.token(index).text; }

    /// "at 7", "around 7".
    bool isLed(int index) const { return is(index - 1, {"at", "@", "around", "about"}); }
    bool isDay(int index) const
    {
        return has(index, Terms::relativeDay) || (has(index, Terms::weekday) && !has(index, Terms::wordToo));
    }
    /// Nothing that is counted or owned by what stands before it.
    bool mayEnd(int index) const { return !TimeTerms::isOrdinary(m_tokens, index) && !has(index, Terms::unit); }
    /// "at 1730 call mum", but not "at 1730 calories".
    bool mayEndLed(int index) const
    {
        return mayEnd(index) || (!text(index).ends_with('s') && !has(index, Terms::unit));
    }
    bool isMarked(int index) const { return has(index, Terms::marker); }

    std::optional<int> figure(int index, std::size_t digits) const
    {
        const bool isFigure = m_tokens.token(index).kind == Kind::number && text(index).size() == digits;
        return isFigure ? decimalNumber(text(index)) : std::nullopt;
    }

    /// "at 1730", "0900 hours", "tomorrow 1830", "at 730", "730 pm".
    Clock fourDigits(int index) const
    {
        constexpr int hundred = 100;
        const bool isLong = text(index).size() == 4;
        const auto number = figure(index, isLong ? 4 : 3);
        if (!number || *number / hundred >= hoursInDay || *number % hundred >= minutesOfClockHour)
            return std::nullopt;
        const int hour = *number / hundred;
        const int minute = *number % hundred;
        const bool isCounted = is(index + 1, {"hours", "hrs", "hour"}) && isLong;
        const bool isTime = isLed(index)
            || (isLong && isCounted
                && (isDay(index + 2) || is(index - 1, {"by", "for", "to", "till", "until", "from"})
                    || index <= m_tokens.start()))
            || (isLong && (isDay(index - 1) || isBehindDate(index))) || (!isLong && isMarked(index + 1))
            || (isLong && text(index).front() == '0' && isOnlyClock(index));
        const int end = isCounted ? index + 2 : index + 1;
        const bool mayStop = isLed(index) || isDay(index - 1) || isBehindDate(index) ? mayEndLed(end) : mayEnd(end);
        const bool isHouse = m_tokens.token(end).hasCapital
            || is(end + 1, {"street", "st", "road", "rd", "avenue", "ave", "lane", "square", "drive"});
        if (!isTime || !mayStop || isHouse || is(end, {"%", "/", "-"}))
            return std::nullopt;
        const bool isOfWholeDay = isCounted || text(index).front() == '0' || hour > noonHour;
        const bool isPlain = isMarked(end) || !isOfWholeDay;
        return TokenReplacement{index, end, isPlain ? clockText(hour, minute) : wholeDayClock(hour, minute)};
    }

    /// "dec 1 0915", "the 5th 0915".
    bool isBehindDate(int index) const
    {
        const Kind before = m_tokens.token(index - 1).kind;
        const bool isDayNumber = before == Kind::number && text(index - 1).size() <= 2;
        if (text(index).starts_with("20")) // "5 june 2027" is a year.
            return false;
        return has(index - 1, Terms::month) || before == Kind::ordinal
            || (isDayNumber && (has(index - 2, Terms::month) || is(index - 2, {"-"})));
    }

    /// "alarm 0600": no code and no number of anything.
    bool isOnlyClock(int index) const
    {
        return !m_hasClock
            && !is(index - 1,
                {"code", "pin", "number", "no", "is", "#", "room", "flat", "extension", "ext", "dial", "ring", "call",
                    "gate", "locker", "password", "year", "model", "ref", "/", "-"})
            && (!m_tokens.isInside(index + 1) || m_tokens.token(index + 1).kind == Kind::mark
                || TimeTerms::isTimeLike(m_tokens, index + 1)
                || is(index + 1, {"to", "for", "hours", "hrs", "please"}));
    }

    /// Of several the others may be matter: "at 10:30 read 08:15 aloud".
    bool isOneOfSeveral(int index) const
    {
        for (int other = 0; other < m_tokens.size(); ++other)
            if (other != index && m_tokens.token(other).kind == Kind::clock)
                return true;
        return false;
    }

    /// "06:52" is one of the clock with 24 hours, and in the morning.
    Clock withZero(int index) const
    {
        if (!isLed(index) && !isDay(index - 1) && isOneOfSeveral(index))
            return std::nullopt;
        const std::string_view word = text(index);
        constexpr std::size_t length = 5;
        const bool isWritten = m_tokens.token(index).kind == Kind::clock && word.size() == length && word[0] == '0'
            && word[2] == ':' && word[3] <= '5';
        const bool isHalved = isMarked(index + 1)
            || (is(index + 1, {"in"}) && is(index + 2, {"the"}) && has(index + 3, Terms::part))
            || has(index + 1, Terms::part) || is(index + 1, {"-", "–"}) || is(index - 1, {"-", "–", "to", "and"});
        return isWritten && !isHalved ? Clock(TokenReplacement{index, index + 1, std::string(word) + " am"})
                                      : std::nullopt;
    }

    /// "7p", "7:30a", "730am", "19h", "19h30".
    Clock glued(int index) const
    {
        const std::string_view word = text(index);
        const auto isDigit = [](char letter) { return letter >= '0' && letter <= '9'; };
        if (m_tokens.token(index).kind != Kind::word || word.empty() || !isDigit(word.front()))
            return std::nullopt;
        const auto end = word.find_first_not_of("0123456789:.");
        const std::string_view figures = word.substr(0, end);
        const std::string_view unit = end == std::string_view::npos ? std::string_view() : word.substr(end);
        const bool isTime = isLed(index) || isDay(index - 1) || is(index - 1, {"by", "from", "until", "till", "to"});
        const bool isPointedHour = unit == "h" && figures.find_first_of(":.") != std::string_view::npos;
        if (isPointedHour && m_tokens.token(index).text.size() <= 6) // "17.30h"
            return TokenReplacement{index, index + 1, std::string(figures)};
        if (unit.starts_with("h"))
            return isTime && mayEndLed(index + 1) ? withHourMark(index, figures, unit.substr(1)) : std::nullopt;
        constexpr std::size_t mostFigures = 5;
        const bool isHalf = unit == "a" || unit == "p";
        const bool isGlued = (unit == "am" || unit == "pm") && figures.size() >= 3
            && figures.find_first_of(":.") == std::string_view::npos; // Others are read as they are.
        const bool isPointed = figures.find_first_of(":.") != std::string_view::npos;
        if (figures.size() > mostFigures || (!isGlued && !(isHalf && (isTime || isPointed))))
            return std::nullopt;
        std::string digits;
        for (const char letter : figures)
            if (isDigit(letter))
                digits += letter;
        const int number = decimalNumber(digits).value_or(0);
        const int hour = digits.size() > 2 ? number / 100 : number;
        const int minute = digits.size() > 2 ? number % 100 : 0;
        if (hour < 1 || hour > noonHour || minute >= minutesOfClockHour)
            return std::nullopt;
        return TokenReplacement{index, index + 1, clockText(hour, minute) + (unit.front() == 'a' ? " am" : " pm")};
    }

    Clock withHourMark(int index, std::string_view hourText, std::string_view minuteText) const
    {
        const auto hour = decimalNumber(hourText);
        const auto minute = minuteText.empty() ? std::optional(0) : decimalNumber(minuteText);
        if (!hour || !minute || *hour >= hoursInDay || *minute >= minutesOfClockHour || hourText.size() > 2)
            return std::nullopt;
        const std::string lead = isDay(index - 1) ? "at " : "";
        return TokenReplacement{index, index + 1, lead + clockText(*hour, *minute)};
    }

    /// "at 7 30", "7 30 pm".
    Clock spacedDigits(int index) const
    {
        const auto hour = TokenNumber::cardinal(m_tokens, index);
        const auto minute = figure(index + 1, 2);
        const bool isHour = hour && m_tokens.token(index).kind == Kind::number && text(index).size() <= 2
            && hour->value < hoursInDay && minute && *minute < minutesOfClockHour;
        if (!isHour || (!isLed(index) && !isMarked(index + 2)) || !mayEnd(index + 2))
            return std::nullopt;
        return TokenReplacement{index, index + 2, clockText(hour->value, *minute)};
    }

    /// "half seven", but not "half a dozen" nor "half 5 kilos".
    Clock half(int index) const
    {
        const auto hour = is(index, {"half"}) ? TokenNumber::cardinal(m_tokens, index + 1) : std::nullopt;
        const bool isHour = hour && hour->value >= 1 && hour->value <= noonHour && hour->end == index + 2
            && !is(index + 1, {"a", "an"});
        const bool isPlace = isLed(index) || is(index - 1, {"by", "until", "till", "for", "from"})
            || index == m_tokens.start() || TimeTerms::isTimeLike(m_tokens, index - 1) || has(index - 1, Terms::weekday)
            || !m_tokens.isInside(index + 2) || TimeTerms::isTimeLike(m_tokens, index + 2);
        const bool mayStop = isLed(index) || isDay(index - 1) ? mayEndLed(index + 2) : mayEnd(index + 2);
        if (!isHour || !isPlace || !mayStop || is(index + 2, {"of", "or", "and", "past", "%"}))
            return std::nullopt;
        const bool hasLead = isLed(index) || is(index - 1, {"by", "until", "till", "from"});
        return TokenReplacement{index, index + 2, (hasLead ? "" : "at ") + clockText(hour->value, 30)};
    }

    /// "3 at night": the patterns take night for the evening.
    Clock smallHour(int index) const
    {
        constexpr int lastOfNight = 4;
        const auto hour = TokenNumber::cardinal(m_tokens, index);
        const int end = index + (is(index + 1, {"o'clock", "oclock"}) ? 2 : 1);
        const bool isAtNight = is(end, {"at"}) && is(end + 1, {"night"});
        const bool isInNight = is(end, {"in"}) && is(end + 1, {"the"}) && is(end + 2, {"night"});
        const bool isSmall = hour && hour->end == index + 1 && hour->value >= 1 && hour->value <= lastOfNight
            && !is(index, {"a", "an"}) && !is(index - 1, {":", "."});
        if (!isSmall || (!isAtNight && !isInNight))
            return std::nullopt;
        return TokenReplacement{index, end + (isAtNight ? 2 : 3), std::to_string(hour->value) + " am"};
    }

    /// "by eod", "at the end of the day", "close of business".
    Clock endOfDay(int index) const
    {
        const int lead = is(index, {"at", "by"}) ? index + 1 : index;
        const int noun = is(lead, {"the"}) ? lead + 1 : lead;
        int end = 0;
        if (is(lead, {"eod", "cob"})) {
            end = lead + 1;
        } else if (is(noun, {"end"}) && is(noun + 1, {"of"})) {
            const int day = is(noun + 2, {"the", "my"}) ? noun + 3 : noun + 2;
            end = is(day, {"day"}) ? day + 1 : 0;
        } else if (is(noun, {"close"}) && is(noun + 1, {"of"}) && is(noun + 2, {"business"})) {
            end = noun + 3;
        }
        const bool isName = end == lead + 1; // "eod" is nothing else.
        const bool isTime = end > 0 && !m_hasClock && (isName || mayEnd(end)) && !is(index - 1, {"every", "each"});
        return isTime ? Clock(TokenReplacement{index, end, "at 5 pm"}) : std::nullopt;
    }

    /// "first thing tomorrow", "first thing in the morning": beside a clock it says nothing more.
    Clock firstThing(int index) const
    {
        if (!is(index, {"first"}) || !is(index + 1, {"thing"}) || is(index - 1, {"the", "my", "a", "one", "next"}))
            return std::nullopt;
        const int next = index + 2;
        const bool namesMorning =
            (is(next, {"in"}) && is(next + 2, {"morning"})) || is(next + 1, {"morning"}) || has(index - 1, Terms::part);
        const bool mayStand = !m_tokens.isInside(next) || TimeTerms::isTimeLike(m_tokens, next)
            || is(next, {"in", "on", "to", ","}) || has(next, Terms::weekday);
        return mayStand ? Clock(TokenReplacement{index, next, namesMorning || m_hasClock ? "" : "in the morning"})
                        : std::nullopt;
    }

    /// "at 5 pm sharp", "at 5 on the dot": a reminder is never later than that.
    Clock sharp(int index) const
    {
        const bool isBehindClock = TimeTerms::clockLength(m_tokens, index - 1) == 1
            || is(index - 1, {"o'clock", "oclock"}) || TimeTerms::clockLength(m_tokens, index - 2) == 2
            || (m_tokens.token(index - 1).kind == Kind::number && isLed(index - 1));
        if (isBehindClock && is(index, {"on"}) && is(index + 1, {"the"}) && is(index + 2, {"dot"}))
            return TokenReplacement{index, index + 3, ""};
        return isBehindClock && is(index, {"sharp", "prompt", "promptly"})
            ? Clock(TokenReplacement{index, index + 1, ""})
            : std::nullopt;
    }

    /// "7:30 ish", "9-ish", "noonish": as near as a reminder can be.
    Clock vague(int index) const
    {
        if (is(index, {"noonish"}))
            return TokenReplacement{index, index + 1, "noon"};
        const int end = is(index + 1, {"-"}) && !m_tokens.token(index + 2).followsSpace ? index + 2 : index + 1;
        const bool isHour = (m_tokens.token(index).kind == Kind::number && text(index).size() <= 2)
            || m_tokens.token(index).kind == Kind::clock;
        const std::string lead = isLed(index) || is(index - 1, {"by"}) ? "" : "at ";
        return isHour && is(end, {"ish"}) ? Clock(TokenReplacement{index, end + 1, lead + std::string(text(index))})
                                          : std::nullopt;
    }

    /// "on thursday starting at 1", "a conference beginning on wednesday".
    Clock starting(int index) const
    {
        const int day = is(index + 1, {"on"}) ? index + 2 : index + 1;
        const bool isDayNumber =
            m_tokens.token(day).kind == Kind::ordinal || (has(day, Terms::month) && day > index + 1);
        if (is(index, {"starting", "beginning", "commencing"}) && (isDay(day) || isDayNumber))
            return TokenReplacement{index, day, isDay(day) && has(day, Terms::relativeDay) ? "" : "on"};
        const bool isLead = is(index, {"starting", "beginning", "starts", "begins", "commencing", "kicks"})
            && is(index + 1, {"at", "from", "around", "@"});
        const bool isHour = m_tokens.token(index + 2).kind == Kind::number && text(index + 2).size() <= 2
            && !has(index + 3, Terms::month | Terms::unit) && !is(index + 3, {"/", "-", "."});
        return isLead && (isHour || TimeTerms::clockLength(m_tokens, index + 2) > 0)
            ? Clock(TokenReplacement{index, index + 2, "at"})
            : std::nullopt;
    }

    /// "at 5 o'clock early morning": beside an hour it says no more than the part itself.
    Clock earlyPart(int index) const
    {
        const bool isOfHour = m_hasClock || is(index - 1, {"o'clock", "oclock", "clock"});
        const int part = is(index + 1, {"in"}) && is(index + 2, {"the"}) ? index + 3 : index + 1;
        const bool isBehindHour = is(index - 1, {"o'clock", "oclock", "clock"}) || isMarked(index - 1)
            || TimeTerms::clockLength(m_tokens, index - 1) > 0 || m_tokens.token(index - 1).kind == Kind::number;
        return is(index, {"early"}) && isOfHour && isBehindHour && has(part, Terms::part)
            ? Clock(TokenReplacement{index, part + 1, "in the " + std::string(text(part))})
            : std::nullopt;
    }

    /// "tomorrow morning 8": an hour behind the part of the day that it is of.
    Clock behindPart(int index) const
    {
        const auto hour = figure(index, text(index).size());
        const bool isHour = hour && *hour >= 1 && *hour <= noonHour && has(index - 1, Terms::part)
            && (isDay(index - 2) || is(index - 2, {"this"}));
        const bool isAlone =
            !m_tokens.isInside(index + 1) || m_tokens.token(index + 1).kind == Kind::mark || is(index + 1, {"to"});
        return isHour && isAlone && !is(index + 1, {"/", "-", ":", "."})
            ? Clock(TokenReplacement{index, index + 1, "at " + std::string(text(index))})
            : std::nullopt;
    }

    const RequestTokens& m_tokens;
    bool m_hasClock = false;
};

} // namespace

std::optional<std::string> withWrittenClocks(const RequestWording& wording)
{
    return TokenReplacement::apply(wording, SpokenClocks(wording.tokens()).find());
}

} // namespace quorvell
