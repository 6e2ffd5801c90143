// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/phrase/PhraseDate.h"

#include <algorithm>

namespace quorvell {

namespace {

using std::chrono::days;
using std::chrono::hours;
using std::chrono::minutes;

constexpr std::size_t mostAlternatives = 2;

/// Twelve on a night that belongs to a day, and the word itself, mean the end of that night rather than its start.
struct TimesOfDay {
    std::vector<minutes> times;
    bool isMidnight = false;
};

bool isBeforeNoon(const PhraseClock& clock, std::optional<DayPart> part)
{
    return clock.form == PhraseClock::Form::am || (clock.form == PhraseClock::Form::bare && part == DayPart::morning);
}

bool isAfterNoon(const PhraseClock& clock, std::optional<DayPart> part)
{
    return clock.form == PhraseClock::Form::pm
        || (clock.form == PhraseClock::Form::bare && part && *part != DayPart::morning);
}

/// More than one where nobody said which half of the day.
std::vector<int> hoursOf(const PhraseClock& clock, std::optional<DayPart> part)
{
    if (clock.form == PhraseClock::Form::noon)
        return {12};
    if (clock.form == PhraseClock::Form::midnight)
        return {0};
    if (isAfterNoon(clock, part))
        return {clock.hour < 12 ? clock.hour + 12 : clock.hour};
    if (isBeforeNoon(clock, part))
        return {clock.hour == 12 ? 0 : clock.hour};
    if (clock.hour >= 1 && clock.hour <= 11)
        return {clock.hour + 12, clock.hour};
    return {clock.hour};
}

TimesOfDay timesOf(const PhraseFindings& findings)
{
    if (!findings.clock)
        return {{hours(findings.part ? PhraseWords::hour(*findings.part) : PhraseWords::defaultHour)}, false};
    const PhraseClock& clock = *findings.clock;
    TimesOfDay times;
    for (const int hour : hoursOf(clock, findings.part))
        times.times.push_back(hours(hour) + minutes(clock.minute));
    const bool isTwelveAtNight = clock.form == PhraseClock::Form::bare && findings.isNightOfDay
        && times.times.front() >= hours(12) && times.times.front() < hours(13);
    if (isTwelveAtNight)
        times = {{minutes(clock.minute)}, true};
    const bool namesItsDay = findings.day && findings.day->source != PhraseDay::Source::tonight;
    if (clock.form == PhraseClock::Form::midnight)
        times.isMidnight = !namesItsDay;
    return times;
}

PhraseDay dayOf(const PhraseFindings& findings, LocalDay today)
{
    if (!findings.day)
        return {today, PhraseDay::Source::words, days(1)};
    PhraseDay day = *findings.day;
    // "tonight at 1 am" is said before the night, and meant after its midnight.
    if (day.source == PhraseDay::Source::tonight && findings.clock && findings.clock->form == PhraseClock::Form::am)
        day.stepWhenPast = days(1);
    return day;
}

bool isWeekend(LocalDay day)
{
    const int weekday = Calendar::weekday(day);
    return weekday == 1 || weekday == 7;
}

class Resolver {
public:
    Resolver(const PhraseFindings& findings, Instant now, const Calendar& calendar)
        : m_findings(findings)
        , m_now(now)
        , m_calendar(calendar)
        , m_day(dayOf(findings, calendar.day(now)))
        , m_times(timesOf(findings))
    {
    }

    std::vector<Instant> candidates() const
    {
        if (m_findings.instant)
            return {*m_findings.instant};
        if (m_findings.offsetDays && !m_findings.clock && !m_findings.part)
            return {m_calendar.addingDays(m_now, *m_findings.offsetDays)};
        std::vector<Instant> candidates;
        for (const minutes time : m_times.times)
            candidates.push_back(candidate(time));
        std::sort(candidates.begin(), candidates.end());
        candidates.erase(std::unique(candidates.begin(), candidates.end()), candidates.end());
        return candidates;
    }

private:
    Instant candidate(minutes time) const
    {
        LocalDay day = m_day.day + days(m_times.isMidnight ? 1 : 0);
        if (m_day.stepWhenPast != days(0) && m_calendar.instant(day, time) <= m_now)
            day += m_day.stepWhenPast;
        while (!m_findings.day && m_findings.repeat == PhraseRepeat::weekdays && isWeekend(day))
            day += days(1);
        return m_calendar.instant(day, time);
    }

    const PhraseFindings& m_findings;
    Instant m_now;
    const Calendar& m_calendar;
    PhraseDay m_day;
    TimesOfDay m_times;
};

std::optional<ReminderRepeat> ruleOf(const PhraseFindings& findings, const CalendarParts& date)
{
    if (!findings.repeat)
        return std::nullopt;
    switch (*findings.repeat) {
    case PhraseRepeat::daily:
        return ReminderRepeat::daily();
    case PhraseRepeat::weekdays:
        return ReminderRepeat::everyWeekday();
    case PhraseRepeat::weeklyOnDate:
        return ReminderRepeat::weekly(date.weekday);
    case PhraseRepeat::weeklyOnWeekday:
        return ReminderRepeat::weekly(findings.repeatWeekday);
    case PhraseRepeat::monthlyOnDate:
        return ReminderRepeat::monthly(date.day);
    case PhraseRepeat::yearly:
        return ReminderRepeat::yearly();
    }
    return std::nullopt;
}

} // namespace

PhraseDate PhraseDate::resolve(const PhraseFindings& findings, Instant now, const Calendar& calendar)
{
    const std::vector<Instant> candidates = Resolver(findings, now, calendar).candidates();
    PhraseDate result;
    result.date = candidates.front();
    const std::size_t end = std::min(candidates.size(), mostAlternatives + 1);
    result.alternatives.assign(candidates.begin() + 1, candidates.begin() + static_cast<std::ptrdiff_t>(end));
    result.hasTime = findings.instant || findings.offsetDays || findings.clock || findings.part;
    result.repeatRule = ruleOf(findings, calendar.parts(result.date));
    return result;
}

} // namespace quorvell
