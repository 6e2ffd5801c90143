// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/request/UnderstoodTime.h"

#include "QuorvellCore/reminders/calendar/DateParts.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace quorvell {

namespace {

using About = PassedOverTime::About;

std::string ruleIn(const PhraseFindings& findings)
{
    if (!findings.repeat)
        return {};
    switch (*findings.repeat) {
    case PhraseRepeat::daily:
        return "every day";
    case PhraseRepeat::weekdays:
        return "every weekday";
    case PhraseRepeat::weeklyOnDate:
        return "every week";
    case PhraseRepeat::weeklyOnWeekday:
        return "every " + std::string(PhraseWords::weekdays[static_cast<std::size_t>(findings.repeatWeekday - 1)]);
    case PhraseRepeat::monthlyOnDate:
        return "every month";
    case PhraseRepeat::yearly:
        return "every year";
    }
    return {};
}

std::string partIn(DayPart part)
{
    switch (part) {
    case DayPart::morning:
        return "in the morning";
    case DayPart::afternoon:
        return "in the afternoon";
    case DayPart::evening:
        return "in the evening";
    case DayPart::night:
        return "at night";
    }
    return {};
}

std::string clockIn(const PhraseReading& phrase, const Calendar& calendar)
{
    const PhraseFindings& findings = phrase.findings;
    if (findings.instant)
        return {};
    if (!findings.clock)
        return findings.part ? partIn(*findings.part) : std::string();
    const CalendarParts parts = calendar.parts(phrase.date.date);
    const bool isEither = !phrase.date.alternatives.empty();
    const int hour = (parts.hour + 11) % 12 + 1;
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), parts.minute == 0 ? "at %d" : "at %d:%02d", hour, parts.minute);
    return std::string(text.data()) + (isEither ? "" : parts.hour < 12 ? " am" : " pm");
}

} // namespace

UnderstoodTime UnderstoodTime::of(
    const PhraseReading& phrase, const std::vector<PassedOverTime>& passedOver, const Calendar& calendar)
{
    const auto isOpen = [&](About what) {
        return std::ranges::any_of(passedOver,
            [&](const PassedOverTime& time) { return time.about == what || time.about == About::everything; });
    };
    const PhraseFindings& findings = phrase.findings;
    // A weekday's rule is its day, too.
    const bool isDayOfRule = findings.repeat == PhraseRepeat::weeklyOnWeekday;
    UnderstoodTime understood;
    if (!isOpen(About::day) || (findings.repeat && !findings.day))
        understood.rule = ruleIn(findings);
    if (!isOpen(About::day) && findings.day && !isDayOfRule)
        understood.day =
            DateParts::fromDay(calendar.instant(findings.day->day, std::chrono::hours(12)), calendar).text();
    if (!isOpen(About::clock))
        understood.clock = clockIn(phrase, calendar);
    return understood;
}

} // namespace quorvell
