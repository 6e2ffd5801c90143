// SPDX-License-Identifier: MIT
#include "Understanding/skills/alarms/AlarmHours.h"

#include "QuorvellCore/reminders/calendar/DateParts.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/time/SpokenWhen.h"
#include "Understanding/words/RequestText.h"

#include <cstdlib>

namespace quorvell {

namespace {

constexpr int minutesOfHour = 60;
constexpr int minutesOfHalf = 12 * minutesOfHour;
constexpr int minutesOfDay = 24 * minutesOfHour;

/// "6 AM"; of an hour without its half "6" and "6:30".
std::string clockWords(int minute, bool isOpen)
{
    const std::string clock = SpokenWhen::clock(DateParts{2000, 1, 1, minute / minutesOfHour, minute % minutesOfHour});
    return isOpen ? clock.substr(0, clock.find(' ')) : clock;
}

/// Before it, an hour without its half is the afternoon's.
int likelyMinute(const AlarmHours& clock)
{
    constexpr int early = 5 * minutesOfHour;
    return clock.from + (clock.isOpen && clock.from < early ? minutesOfHalf : 0);
}

std::string without(const std::string& words, const PatternMatch& match)
{
    return trimmed(words.substr(0, match.range.start) + " " + words.substr(match.range.end));
}

} // namespace

std::optional<AlarmHours> AlarmHours::takeClock(std::string& words)
{
    static const Pattern form(
        "\\b(?:at |for |of |from |to "
        ")?(?:(noon|midday)|(midnight)|(\\d{1,2})(?:(?:[:.]| "
        "(?=[0-5]\\d(?!\\d)))(\\d{2}))?(?!\\d|st\\b|nd\\b|rd\\b|th\\b)"
        "\\s*(?:([ap])\\.?\\s?m\\b\\.?|o['’]?clock)?)(?:\\s*in the (morning|afternoon|evening)|\\s*at (night))?",
        Pattern::caseless);
    const auto match = form.find(words);
    if (!match)
        return std::nullopt;
    const auto& part = match->texts;
    int minute = part[0].empty() ? 0 : minutesOfHalf;
    bool isOpen = false;
    if (part[0].empty() && part[1].empty()) {
        const std::string half = lowerCased(part[4]);
        const std::string of = lowerCased(part[5] + part[6]);
        const int hour = std::atoi(part[2].c_str());
        const int minutes = part[3].empty() ? 0 : std::atoi(part[3].c_str());
        if (hour > 23 || minutes >= minutesOfHour)
            return std::nullopt;
        const bool isLate = half == "p" || of == "afternoon" || of == "evening" || of == "night";
        isOpen = half.empty() && of.empty() && hour <= 12 && hour != 0;
        minute = (!isOpen && hour > 12 ? hour : hour % 12 + (isLate ? 12 : 0)) * minutesOfHour + minutes;
    }
    words = without(words, *match);
    return AlarmHours{minute, minute + 1, isOpen, "for " + clockWords(minute, isOpen)};
}

std::optional<AlarmHours> AlarmHours::takePart(std::string& words)
{
    static const Pattern form(
        "\\b(?:in the |of the |at )?(morning|afternoon|evening|night)s?\\b(?: hours?)?", Pattern::caseless);
    const auto match = form.find(words);
    if (!match)
        return std::nullopt;
    const std::string part = lowerCased(match->texts[0]);
    words = without(words, *match);
    const std::string said = part == "night" ? "at night" : "in the " + part;
    if (part == "morning")
        return AlarmHours{0, minutesOfHalf, false, said};
    constexpr int evening = 17 * minutesOfHour;
    return part == "afternoon" ? AlarmHours{minutesOfHalf, evening + minutesOfHour, false, said}
                               : AlarmHours{evening, minutesOfDay, false, said};
}

std::optional<AlarmHours> AlarmHours::takeStretch(std::string& words)
{
    static const Pattern form(
        "\\b(?:(between|from)\\s+(.+?)\\s+(?:and|to|until|till)\\s+(.+)|(before|earlier than)\\s+(.+)"
        "|(after|later than|past)\\s+(.+))$",
        Pattern::caseless);
    const auto match = form.find(words);
    if (!match)
        return std::nullopt;
    const auto& part = match->texts;
    std::string last = part[2] + part[4] + part[6];
    std::string first = part[1];
    const auto end = takeClock(last);
    const auto start = takeClock(first);
    if (!end || (start.has_value() == part[0].empty()) || !RequestText::isIdle(last) || !RequestText::isIdle(first))
        return std::nullopt;
    words = trimmed(words.substr(0, match->range.start));
    const int until = likelyMinute(*end);
    if (!part[3].empty())
        return AlarmHours{0, until, false, "before " + clockWords(until, false)};
    if (!part[5].empty())
        return AlarmHours{until + 1, minutesOfDay, false, "after " + clockWords(until, false)};
    int from = start->from;
    if (start->isOpen && from + minutesOfHalf < until) // "From 2 to 4 pm".
        from += minutesOfHalf;
    return AlarmHours{
        from, until + 1, false, "between " + clockWords(from, false) + " and " + clockWords(until, false)};
}

bool AlarmHours::hold(int minuteOfDay) const
{
    const auto isIn = [&](int minute) { return minute >= from && minute < end; };
    return isIn(minuteOfDay) || (isOpen && isIn((minuteOfDay + minutesOfHalf) % minutesOfDay));
}

} // namespace quorvell
