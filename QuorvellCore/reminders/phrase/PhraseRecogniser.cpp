// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/phrase/PhraseRecogniser.h"

#include "QuorvellCore/reminders/calendar/DaySearch.h"
#include "QuorvellCore/reminders/phrase/PhrasePatterns.h"

#include <algorithm>

namespace quorvell {

namespace {

using std::chrono::days;

constexpr LocalDay lastDay = std::chrono::local_days(std::chrono::year(9999) / 12 / 31);

const PhrasePatterns& patterns()
{
    return PhrasePatterns::all();
}

std::optional<PhraseClock> clockOf(
    PhraseClock::Form form, const std::string& hourText, const std::string& minuteText = "0")
{
    const auto hour = PhraseWords::amount(hourText);
    const auto minute = PhraseWords::amount(minuteText);
    if (!hour || !minute || *hour > 23 || *minute > 59)
        return std::nullopt;
    return PhraseClock{form, *hour, *minute};
}

PhraseClock::Form formOf(const std::string& marker)
{
    if (marker.empty())
        return PhraseClock::Form::bare;
    return marker.front() == 'a' ? PhraseClock::Form::am : PhraseClock::Form::pm;
}

/// The groups are those of PhrasePatterns::clock, one or more for each way to write a time.
std::optional<PhraseClock> clockOf(const PatternMatch& match)
{
    const auto& texts = match.texts;
    if (match.groups[0])
        return clockOf(formOf(texts[2]), texts[0], texts[1]);
    if (match.groups[3])
        return clockOf(formOf(texts[4]), texts[3]);
    if (match.groups[5])
        return clockOf(PhraseClock::Form::bare, texts[5]);
    return PhraseClock{texts[6] == "midnight" ? PhraseClock::Form::midnight : PhraseClock::Form::noon, 0, 0};
}

/// Whether "in the evening" can be said of a time that is clear without it.
bool agrees(DayPart part, const PhraseClock& clock)
{
    const bool isMorning = clock.form == PhraseClock::Form::am || clock.form == PhraseClock::Form::midnight
        || (clock.form == PhraseClock::Form::bare && clock.hour < 12);
    return (part == DayPart::morning) == isMorning;
}

} // namespace

PhraseRecogniser::PhraseRecogniser(std::string_view lowerCasedText, Instant now, const Calendar& calendar)
    : m_text(lowerCasedText)
    , m_keywords(lowerCasedText)
    , m_now(now)
    , m_calendar(calendar)
    , m_today(calendar.day(now))
{
}

PhraseFindings PhraseRecogniser::findings(const PhraseHints& hints)
{
    if (hints.day)
        m_findings.day = PhraseDay{*hints.day};
    m_findings.ranges = hints.dayWords;
    findRepeat();
    findOffset();
    if (m_findings.instant)
        return m_findings;
    findNamedDay();
    findThisPart();
    findWeekday();
    findNextWeek();
    findDayAndMonth();
    findDayOfMonth();
    findClock();
    findSecondChanceClock();
    findPart();
    return m_findings;
}

std::optional<PatternMatch> PhraseRecogniser::search(PhraseSearch what, const Pattern& pattern, std::size_t from) const
{
    const std::size_t start = m_keywords.start(what);
    return start == PhraseKeywords::nowhere ? std::nullopt : pattern.find(m_text, std::max(start, from));
}

void PhraseRecogniser::setDay(const PhraseDay& day, const PatternMatch& match, std::string_view part)
{
    m_findings.day = day;
    m_findings.ranges.push_back(match.range);
    setPart(part, true);
}

void PhraseRecogniser::setPart(std::string_view word, bool isOfDay)
{
    if (m_findings.part)
        return;
    m_findings.part = PhraseWords::part(word);
    m_findings.isNightOfDay = isOfDay && m_findings.part == DayPart::night;
}

void PhraseRecogniser::findRepeat()
{
    const auto match = search(PhraseSearch::repeat, patterns().repeat);
    if (!match)
        return;
    const std::string& word = match->groups[0] ? match->texts[0] : match->texts[1];
    m_findings.ranges.push_back(match->range);
    if (word == "day" || word == "daily" || PhraseWords::part(word)) {
        m_findings.repeat = PhraseRepeat::daily;
        setPart(word, true);
    } else if (word == "weekday" || word == "weekdays") {
        m_findings.repeat = PhraseRepeat::weekdays;
    } else if (word == "week" || word == "weekly") {
        m_findings.repeat = PhraseRepeat::weeklyOnDate;
    } else if (word == "month" || word == "monthly") {
        m_findings.repeat = PhraseRepeat::monthlyOnDate;
    } else if (word == "year" || word == "yearly") {
        m_findings.repeat = PhraseRepeat::yearly;
    } else if (const auto weekday = PhraseWords::weekday(word)) {
        m_findings.repeat = PhraseRepeat::weeklyOnWeekday;
        m_findings.repeatWeekday = *weekday;
        m_findings.day = comingWeekday(*weekday);
    }
}

void PhraseRecogniser::findOffset()
{
    if (m_findings.day)
        return;
    const auto match = search(PhraseSearch::offset, patterns().offset);
    const auto amount = match ? PhraseWords::amount(match->texts[0]) : std::nullopt;
    if (!amount)
        return;
    const bool isHalfHour = match->texts[0] == "half an";
    const char unit = isHalfHour ? 'm' : match->texts[1].front();
    if (unit == 'm' || unit == 'h') {
        const auto minutes = std::chrono::minutes(isHalfHour ? 30 : *amount);
        const Instant instant = m_now + minutes * (unit == 'h' ? 60 : 1);
        if (m_calendar.day(instant) > lastDay)
            return;
        m_findings.instant = instant;
        m_findings.ranges.push_back(match->range);
        return;
    }
    const days count = days(*amount) * (unit == 'd' ? 1 : 7);
    if (m_today + count > lastDay)
        return;
    m_findings.offsetDays = count;
    setDay({m_today + count, PhraseDay::Source::offset, days(0)}, *match);
}

void PhraseRecogniser::findNamedDay()
{
    if (m_findings.day)
        return;
    const auto match = search(PhraseSearch::namedDay, patterns().namedDay);
    if (!match)
        return;
    const std::string& word = match->texts[0];
    if (word == "tonight")
        setDay({m_today, PhraseDay::Source::tonight, days(0)}, *match, "night");
    else if (word == "today")
        setDay({m_today}, *match, match->texts[1]);
    else
        setDay({m_today + days(word == "day after tomorrow" ? 2 : 1)}, *match, match->texts[1]);
}

void PhraseRecogniser::findThisPart()
{
    if (m_findings.day)
        return;
    if (const auto match = search(PhraseSearch::thisPart, patterns().thisPart))
        setDay({m_today}, *match, match->texts[0]);
}

/// Of today's weekday, today while the time is ahead, a week on afterwards.
PhraseDay PhraseRecogniser::comingWeekday(int weekday) const
{
    if (Calendar::weekday(m_today) == weekday)
        return {m_today, PhraseDay::Source::words, days(7)};
    return {nextWeekday(m_today, weekday).value_or(m_today)};
}

void PhraseRecogniser::findWeekday()
{
    if (m_findings.day)
        return;
    const auto match = search(PhraseSearch::weekday, patterns().weekday);
    const auto weekday = match ? PhraseWords::weekday(match->texts[1]) : std::nullopt;
    if (!weekday)
        return;
    const std::string& prefix = match->texts[0];
    const auto nextWeek =
        prefix.empty() ? search(PhraseSearch::nextWeek, patterns().nextWeek) : std::optional<PatternMatch>();
    PhraseDay day{nextWeekday(m_today, *weekday).value_or(m_today)};
    if (nextWeek || prefix.starts_with("next"))
        day.day = weekdayOfNextWeek(m_today, *weekday);
    else if (prefix.starts_with("this") || (prefix.empty() && m_findings.repeat))
        day = comingWeekday(*weekday);
    setDay(day, *match, match->texts[2]);
    if (nextWeek)
        m_findings.ranges.push_back(nextWeek->range);
}

void PhraseRecogniser::findNextWeek()
{
    if (m_findings.day)
        return;
    if (const auto match = search(PhraseSearch::nextWeek, patterns().nextWeek))
        setDay({m_today + days(7)}, *match);
}

void PhraseRecogniser::findDayAndMonth()
{
    if (m_findings.day)
        return;
    const auto match = search(PhraseSearch::dayAndMonth, patterns().dayAndMonth);
    if (!match)
        return;
    const bool isDayFirst = match->groups[0].has_value();
    const auto day = PhraseWords::amount(match->texts[isDayFirst ? 0 : 3]);
    const auto month = PhraseWords::month(match->texts[isDayFirst ? 1 : 2]);
    if (const auto date = day && month ? nextDate(*month, *day, m_today) : std::nullopt)
        setDay({*date}, *match);
}

void PhraseRecogniser::findDayOfMonth()
{
    if (m_findings.day)
        return;
    const auto match = search(PhraseSearch::dayOfMonth, patterns().dayOfMonth);
    const auto day = match ? PhraseWords::amount(match->texts[0]) : std::nullopt;
    if (const auto date = day ? nextDayOfMonth(m_today, *day) : std::nullopt)
        setDay({*date}, *match);
}

/// Something that only looks like a time ("3.99") does not hide a real one behind it.
void PhraseRecogniser::findClock()
{
    auto match = search(PhraseSearch::clock, patterns().clock);
    while (match && !m_findings.clock) {
        m_findings.clock = clockOf(*match);
        if (m_findings.clock)
            m_findings.ranges.push_back(match->range);
        else
            match = search(PhraseSearch::clock, patterns().clock, match->range.end);
    }
}

void PhraseRecogniser::findSecondChanceClock()
{
    if (m_findings.clock)
        return;
    const auto match = search(PhraseSearch::clock, patterns().secondChanceClock);
    m_findings.clock = match ? clockOf(PhraseClock::Form::bare, match->texts[match->groups[0] ? 0 : 1]) : std::nullopt;
    if (m_findings.clock)
        m_findings.ranges.push_back(match->range);
}

/// A part of the day says something where there is no time or only a bare hour. Beside a time that is clear without
/// it, it belongs to the task ("at 7pm cook the evening meal") unless it was said as a time ("in the evening").
bool PhraseRecogniser::partContributes(DayPart part, const PatternMatch& match) const
{
    const auto& clock = m_findings.clock;
    const bool saysSomething = !clock || (clock->form == PhraseClock::Form::bare && clock->hour <= 12);
    if (saysSomething && !m_findings.part)
        return true;
    const bool isSaidAsTime = m_text.text().substr(match.range.start).starts_with("in");
    return clock && isSaidAsTime && agrees(part, *clock);
}

void PhraseRecogniser::findPart()
{
    const auto match = search(PhraseSearch::part, patterns().part);
    const auto part = match ? PhraseWords::part(match->texts[0]) : std::nullopt;
    if (!part || !partContributes(*part, *match))
        return;
    m_findings.ranges.push_back(match->range);
    setPart(match->texts[0], false);
}

} // namespace quorvell
