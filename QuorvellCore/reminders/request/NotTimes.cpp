// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/request/NotTimes.h"

#include "QuorvellCore/reminders/wording/RequestVocabulary.h"
#include "QuorvellCore/reminders/wording/TimeTerms.h"

#include <algorithm>

namespace quorvell {

namespace {

using Kind = RequestToken::Kind;
using Terms = WordTerms;
using Meaning = RequestToken::Meaning;

bool isFigure(const RequestToken& token)
{
    return token.kind == Kind::number || token.kind == Kind::clock;
}

bool holdsDigitAndSign(std::string_view text)
{
    const auto isBeyondAscii = [](char letter) { return static_cast<unsigned char>(letter) >= 0x80; };
    return std::ranges::any_of(text, isBeyondAscii) && text.find_first_of("0123456789") != std::string_view::npos;
}

/// Looks at one word with its neighbours; each rule tells what it means by its own lights, `open` where it has none.
class NotTimes {
public:
    explicit NotTimes(RequestTokens& tokens)
        : m_tokens(tokens)
    {
        m_hasOtherDay = countOf([this](int index) { return has(index, Terms::relativeDay); }) > 0
            || countOf([this](int index) { return has(index, Terms::weekday) && !has(index, Terms::wordToo); }) > 1;
        m_clocks = countOf([this](int index) { return isClock(index); });
    }

    void mark()
    {
        m_tokens.markQuotes();
        for (int index = 0; index < m_tokens.size(); ++index) {
            if (!has(index, Terms::notTime) || !m_tokens.isOpen(index))
                continue;
            for (const auto rule : {&NotTimes::possessive, &NotTimes::partOfWord, &NotTimes::amount,
                     &NotTimes::fraction, &NotTimes::clauseClock, &NotTimes::dottedTime, &NotTimes::address,
                     &NotTimes::shortWeekday, &NotTimes::attributiveDay, &NotTimes::title, &NotTimes::attributivePart,
                     &NotTimes::attributiveRule, &NotTimes::attributiveOrdinal, &NotTimes::attributiveDate,
                     &NotTimes::attributiveClock, &NotTimes::attributiveOClock}) {
                const Meaning meaning = (this->*rule)(index);
                if (meaning == Meaning::open)
                    continue;
                m_tokens.mark(index, meaning);
                break;
            }
        }
    }

private:
    template <typename Condition> int countOf(Condition isMeant) const
    {
        int count = 0;
        for (int index = 0; index < m_tokens.size(); ++index)
            count += isMeant(index) ? 1 : 0;
        return count;
    }

    bool is(int index, RequestTokens::Words words) const { return m_tokens.is(index, words); }
    bool has(int index, std::uint32_t anyOf) const { return m_tokens.has(index, anyOf); }
    const RequestToken& at(int index) const { return m_tokens.token(index); }

    Meaning taskIf(bool holds) const { return holds ? Meaning::task : Meaning::open; }
    /// With another day in the request these words can only belong to the task; alone they may be the day.
    Meaning taskOrDoubtful() const { return m_hasOtherDay ? Meaning::task : Meaning::doubtful; }

    bool isClock(int index) const
    {
        const bool isHour = at(index).kind == Kind::number && is(index - 1, {"at", "by", "@"});
        return isHour || TimeTerms::clockLength(m_tokens, index) > 0;
    }

    /// Of a clock that may belong to the task: it does where another one is the time.
    Meaning clockOfTask(int index) const
    {
        int others = m_clocks;
        for (int near = index - 1; near <= index + 1; ++near)
            others -= isClock(near) ? 1 : 0;
        return others > 0 ? Meaning::task : Meaning::doubtful;
    }

    /// "Tomorrow's meeting": whose day this is says nothing about the reminder.
    Meaning possessive(int index)
    {
        const std::string_view text = at(index).text;
        const std::string_view owner = text.substr(0, text.find_first_of("'\xE2"));
        const bool isOwner = owner.size() < text.size() && text.ends_with('s');
        const bool isPlural = is(index, {"tomorrows", "todays", "tonights"});
        return taskIf(isPlural
            || (isOwner
                && (owner == "yesterday"
                    || RequestVocabulary::termsOf(owner).has(
                        Terms::weekday | Terms::relativeDay | Terms::month | Terms::part | Terms::unit))));
    }

    /// "5 amazing", "5 marshmallows", "decide 3": the patterns look at the first letters only.
    Meaning partOfWord(int index)
    {
        const std::string_view text = at(index).text;
        if (at(index).kind != Kind::word || text.size() < 3)
            return Meaning::open;
        const auto firstLetter =
            std::ranges::find_if_not(text, [](char letter) { return letter >= '0' && letter <= '9'; });
        const std::string_view letters = text.substr(static_cast<std::size_t>(firstLetter - text.begin()));
        const bool hasFigures = letters.size() < text.size() || isFigure(at(index - 1));
        const bool isMarker = is(index, {"a.m", "p.m", "a.m.", "p.m."});
        const bool beginsLikeMarker = letters.size() > 2 && (letters.starts_with("am") || letters.starts_with("pm"));
        return taskIf((hasFigures && beginsLikeMarker && !isMarker) || has(index, Terms::beginsLikeMonth));
    }

    /// Prices, measures, shares, versions: "$12.50", "at 5 degrees", "march 5 miles", "version 2.30".
    Meaning amount(int index)
    {
        if (at(index).kind == Kind::word && holdsDigitAndSign(at(index).text)) // "£12.50", "20°"
            return Meaning::task;
        if (at(index).kind == Kind::figures)
            return isDottedDate(index) ? Meaning::doubtful : Meaning::task;
        if (!isFigure(at(index)) || TimeTerms::clockLength(m_tokens, index) > 1)
            return Meaning::open;
        const bool isMoney = is(index - 1, {"$", "gbp", "usd", "eur"}) && !is(index - 1, {"@"});
        const bool isPointed = at(index).text.find_first_of(".:") != std::string_view::npos;
        const bool isNamed = isPointed
            && is(index - 1,
                {"version", "chapter", "section", "ratio", "score", "psalm", "verse", "john", "luke", "matthew", "mark",
                    "genesis", "exodus", "romans", "python", "ubuntu", "android", "ios", "release", "size", "part",
                    "episode", "exercise", "figure", "room", "page"});
        const bool isMeasure = is(index + 1,
            {"%", "percent", "pounds", "pound", "quid", "euro", "euros", "dollar", "dollars", "bucks", "cents", "pence",
                "usd", "eur", "gbp", "degrees", "degree", "celsius", "fahrenheit", "km", "kilometres", "kilometers",
                "mile", "miles", "mph", "metres", "meters", "metre", "meter", "cm", "mm", "kg", "kilo", "kilos", "gram",
                "grams", "litre", "litres", "liter", "liters", "ml", "cups", "cup", "inch", "inches", "feet"});
        const bool isHouse = is(index + 2, {"street", "st", "road", "rd", "avenue", "ave", "lane", "square", "drive"})
            && TimeTerms::isOrdinary(m_tokens, index + 1);
        const bool isCount = is(index + 1, {"points", "times", "people", "pieces", "copies", "bottles", "stars"});
        if (isCount && is(index - 1, {"at", "by", "@"})) // "At 5 people come."
            return Meaning::doubtful;
        return taskIf(isMoney || isNamed || isMeasure || isCount || isHouse);
    }

    /// "20.3.2027", but not "version 1.10.22".
    bool isDottedDate(int index) const
    {
        constexpr std::size_t longest = 10;
        const std::string_view text = at(index).text;
        return std::ranges::count(text, '.') == 2 && text.size() <= longest && text.find(':') == std::string_view::npos
            && text.find('.') <= 2 && text.rfind('.') - text.find('.') <= 3 && text.size() - text.rfind('.') >= 3
            && !is(index - 1, {"version", "release", "v", "section", "chapter"});
    }

    /// "1/2 cup", "24/7". A date that is written so is asked about by others.
    Meaning fraction(int index)
    {
        const bool isUpper = at(index).kind == Kind::number && is(index + 1, {"/"});
        const bool isLower = at(index).kind == Kind::number && is(index - 1, {"/"});
        const int first = isLower ? index - 2 : index;
        const bool mayBeDate =
            is(first - (is(first - 1, {"the"}) ? 2 : 1), {"on", "until", "till", "before", "from", "due", "/"})
            || is(first + 3, {"/"});
        return taskIf((isUpper || isLower) && !mayBeDate
            && (!is(first - 1, {"by", "at"}) || TimeTerms::isOrdinary(m_tokens, first + 3)));
    }

    /// "at 9:45 that I have a call at 10": what is to be said has an hour of its own.
    Meaning clauseClock(int index)
    {
        if (!isClock(index))
            return Meaning::open;
        int that = index - 1;
        while (that >= m_tokens.start() && !is(that, {"that"}))
            --that;
        bool hasEarlier = false;
        for (int earlier = m_tokens.start(); earlier < that && !hasEarlier; ++earlier)
            hasEarlier = isClock(earlier);
        // Behind "that" alone, as in "that meeting at 5", stands no clause.
        return taskIf(hasEarlier && that + 2 < index);
    }

    /// "5.30" without more may be a time or a price; what stands around it decides.
    Meaning dottedTime(int index)
    {
        const bool isDotted = at(index).kind == Kind::clock && at(index).text.find('.') != std::string_view::npos
            && at(index).text.back() >= '0' && at(index).text.back() <= '9'
            && TimeTerms::clockLength(m_tokens, index) == 1;
        const bool isLed =
            is(index - 1, {"at", "by", "@", "around", "about", "before", "after", "until", "till", "from"});
        const bool isDate = is(index - 1, {"on"}) || (is(index - 1, {"the"}) && is(index - 2, {"on", "by", "until"}))
            || (is(index + 1, {"."}) && !at(index + 1).followsSpace && m_tokens.isInside(index + 2));
        const bool mayBeMonth = at(index).text.ends_with("10") || at(index).text.ends_with("11")
            || at(index).text.ends_with("12") || (isDotted && at(index).text[at(index).text.size() - 2] == '0');
        if (isDotted && mayBeMonth && !is(index - 1, {"at", "@"})
            && isDate) // "on 03.12.": nobody can say which is the month.
            return Meaning::doubtful;
        if (!isDotted || isLed)
            return Meaning::open;
        if (at(index).text[at(index).text.size() - 2] > '5') // More minutes than an hour has.
            return Meaning::task;
        if (index == m_tokens.start())
            return Meaning::open;
        if (is(index - 1,
                {"pay", "costs", "cost", "spend", "owe", "transfer", "give", "charge", "worth", "send", "tip"}))
            return Meaning::task;
        const bool isBesideDay =
            TimeTerms::isTimeLike(m_tokens, index - 1) || TimeTerms::isTimeLike(m_tokens, index + 1);
        return isBesideDay ? Meaning::open : clockOfTask(index);
    }

    /// "bob@12.com"
    Meaning address(int index)
    {
        const bool isGlued = is(index - 1, {"@"}) && !at(index - 1).followsSpace && !at(index).followsSpace;
        return taskIf(isGlued && isFigure(at(index)) && is(index + 1, {"."}) && m_tokens.isInside(index + 2)
            && !at(index + 2).followsSpace);
    }

    /// "buy sun cream", "we wed at noon" or "sun at 5 pm": by the neighbours.
    Meaning shortWeekday(int index)
    {
        if (!has(index, Terms::wordToo))
            return Meaning::open;
        const bool isLed = has(index - 1, Terms::governsDay) || TimeTerms::isTimeLike(m_tokens, index - 1);
        const bool isThing = is(index - 1, {"the", "in", "a", "to", "i", "we", "he", "she", "they", "cat"});
        const bool isAlone = !m_tokens.isInside(index + 1) || at(index + 1).kind == Kind::mark;
        const bool isFollowed = TimeTerms::isTimeLike(m_tokens, index + 1)
            || (is(index + 1, {"the"}) && at(index + 2).kind == Kind::ordinal);
        const bool isListed = is(index + 1, {"and", "or", "to"}) && has(index + 2, Terms::weekday);
        if (isThing && !isLed)
            return Meaning::task;
        if (isLed || isAlone || isFollowed || isListed)
            return m_hasOtherDay && !isLed && !isListed ? Meaning::task : Meaning::open;
        return index == m_tokens.start() ? taskOrDoubtful() : Meaning::task;
    }

    /// "the friday report", "last friday", "good friday".
    Meaning attributiveDay(int index)
    {
        if (!has(index, Terms::weekday) || has(index, Terms::wordToo))
            return Meaning::open;
        if (is(index - 1, {"last"})) // But "the last friday of the month".
            return is(index + 1, {"of", "in"}) || is(index - 2, {"the"}) ? Meaning::doubtful
                : is(index - 2, {"of", "from", "since"})                 ? Meaning::task
                                                                         : taskOrDoubtful();
        if (is(index - 1, {"good", "black", "cyber", "ash", "easter", "ruby", "super", "casual", "fat", "bloody"}))
            return is(index - 2, {"on", "by", "until", "before", "after"}) ? Meaning::doubtful : Meaning::task;
        const bool isPart = has(index + 1, Terms::part);
        const bool isAttribute = has(index - 1, Terms::determiner) && !has(index - 2, Terms::governsDay)
            && TimeTerms::isOrdinary(m_tokens, index + (isPart ? 2 : 1));
        return isAttribute ? taskOrDoubtful() : Meaning::open;
    }

    /// "Friday Night Lights", "March Madness": capitals that go on behind a day in the middle of the request.
    Meaning title(int index)
    {
        const bool isDay = has(index, Terms::weekday) || has(index, Terms::part);
        const bool isInside = at(index).hasCapital && index > m_tokens.start() && !has(index - 1, Terms::governsDay);
        if (!isDay || !isInside)
            return Meaning::open;
        const bool continues =
            at(index - 1).meaning != Meaning::open && has(index, Terms::part) && has(index - 1, Terms::weekday);
        const int next = has(index + 1, Terms::part) && at(index + 1).hasCapital ? index + 2 : index + 1;
        const bool isTitle = at(next).hasCapital && TimeTerms::isOrdinary(m_tokens, next);
        return continues ? at(index - 1).meaning : isTitle ? taskOrDoubtful() : Meaning::open;
    }

    /// "the evening meal", "a night train", "say good morning".
    Meaning attributivePart(int index)
    {
        if (!has(index, Terms::part))
            return Meaning::open;
        const bool isGreeting = is(index - 1, {"good", "a", "an"}) && TimeTerms::isOrdinary(m_tokens, index + 1);
        const bool isWish = is(index - 1, {"good"});
        const bool isThing = is(index - 1, {"the", "my", "our", "your", "his", "her", "their", "any"})
            && !is(index - 2, {"in", "on", "during"}) && TimeTerms::isOrdinary(m_tokens, index + 1);
        return taskIf(isGreeting || isWish || isThing);
    }

    /// "the weekly magazine"
    Meaning attributiveRule(int index)
    {
        return taskIf(is(index, {"daily", "weekly", "monthly", "yearly"}) && TimeTerms::isOrdinary(m_tokens, index + 1)
            && is(index - 1,
                {"the", "my", "our", "your", "his", "her", "their", "of", "half", "semi", "bi", "twice", "-"}));
    }

    /// "the 5th floor", "to the 2nd house".
    Meaning attributiveOrdinal(int index)
    {
        if (at(index).kind != Kind::ordinal)
            return Meaning::open;
        const bool isNamed = is(index + 1,
            {"floor", "avenue", "ave", "street", "grade", "edition", "chapter", "birthday", "anniversary", "season",
                "episode", "place", "time", "draft", "row", "step", "hand", "person", "party", "half", "round",
                "century", "copy", "class", "one", "attempt", "try", "coat", "dose"});
        const bool isReached = is(index - 1, {"the"}) && is(index - 2, {"to", "in", "from", "of", "at", "for"})
            && TimeTerms::isOrdinary(m_tokens, index + 1) && !has(index + 1, Terms::unit);
        return taskIf(isNamed || isReached);
    }

    /// "prepare the 5 march deadline"
    Meaning attributiveDate(int index)
    {
        const bool isDay = (at(index).kind == Kind::number || at(index).kind == Kind::ordinal);
        const int monthIndex = isDay ? (is(index + 1, {"of"}) ? index + 2 : index + 1) : index;
        if (!has(monthIndex, Terms::month))
            return Meaning::open;
        int first = isDay ? index : index - 1;
        if (!isDay && is(first, {"of"}))
            --first;
        const bool hasDay = at(first).kind == Kind::number || at(first).kind == Kind::ordinal;
        const bool isLed = is(first - 2, {"on", "by", ",", "until", "from", "before", "after"})
            || has(first - 2, Terms::weekday) || first - 1 <= m_tokens.start();
        const bool isAttribute =
            hasDay && is(first - 1, {"the", "my", "our"}) && !isLed && TimeTerms::isOrdinary(m_tokens, monthIndex + 1);
        return isAttribute ? taskOrDoubtful() : Meaning::open;
    }

    /// "buy 2 pm tickets", "my 2pm appointment": perhaps the time, perhaps only which ones.
    Meaning attributiveClock(int index)
    {
        const int length = TimeTerms::clockLength(m_tokens, index);
        const bool isMarked = length > 0 && at(index).kind != Kind::word
            && is(index + length - 1, {"am", "pm", "a.m", "p.m", "a.m.", "p.m."});
        const bool endsMarked =
            at(index).kind == Kind::clock && at(index).text.find_first_of("ap") != std::string_view::npos;
        if (!(isMarked || endsMarked) || !TimeTerms::isOrdinary(m_tokens, index + length) || index <= m_tokens.start())
            return Meaning::open;
        const bool isBehindWord = TimeTerms::isOrdinary(m_tokens, index - 1) && !has(index - 1, Terms::weekday);
        const bool isAttribute =
            isBehindWord || is(index - 1, {"to", "my", "our", "your", "his", "her", "their", "the", "of"});
        if (!isAttribute)
            return Meaning::open;
        const Meaning meaning = clockOfTask(index);
        if (length == 2)
            m_tokens.mark(index + 1, meaning);
        return meaning;
    }

    /// "watch the 9 o'clock news"
    Meaning attributiveOClock(int index)
    {
        const bool isNamed = is(index, {"o'clock", "oclock", "o’clock"}) && is(index - 2, {"the", "my", "our"})
            && TimeTerms::isOrdinary(m_tokens, index + 1);
        if (!isNamed)
            return Meaning::open;
        const Meaning meaning = clockOfTask(index);
        m_tokens.mark(index - 1, meaning);
        return meaning;
    }

    RequestTokens& m_tokens;
    bool m_hasOtherDay = false;
    int m_clocks = 0;
};

} // namespace

void markNotTimes(RequestTokens& tokens)
{
    NotTimes(tokens).mark();
}

} // namespace quorvell
