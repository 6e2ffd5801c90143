// SPDX-License-Identifier: MIT
#include "Understanding/skills/clock/PartOfDay.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/clock/ClockText.h"
#include "Understanding/skills/clock/ClockTime.h"
#include "Understanding/time/SpokenPhrase.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <string_view>

namespace quorvell {

namespace {

using std::chrono::hours;
using std::chrono::minutes;
using Said = std::optional<std::string>;

struct DayPart {
    std::string_view name;
    hours from;
    hours to; ///< Before `from` where it goes over midnight.
};

/// As most people speak of them. The first that holds the time is what it is called.
constexpr std::array dayParts{DayPart{"morning", hours(5), hours(12)}, DayPart{"afternoon", hours(12), hours(18)},
    DayPart{"evening", hours(18), hours(22)}, DayPart{"night", hours(22), hours(5)}, DayPart{"am", hours(0), hours(12)},
    DayPart{"pm", hours(12), hours(24)}, DayPart{"day", hours(6), hours(20)}, DayPart{"late", hours(21), hours(4)},
    DayPart{"early", hours(4), hours(9)}};

bool isIn(const DayPart& part, minutes time)
{
    return part.from < part.to ? time >= part.from && time < part.to : time >= part.from || time < part.to;
}

minutes timeOfDay(const LocalTime& around)
{
    return std::chrono::duration_cast<minutes>(around.now - around.calendar.startOfDay(around.now));
}

std::string clockNow(const LocalTime& around)
{
    return ClockText::clock(around.now, around.calendar, around);
}

Said inPart(const std::string& phrase, const LocalTime& around)
{
    static const std::string name = "(am|pm|morning|afternoon|evening|night|day|late|early)(?: ?time)?";
    static const Pattern form("^(?:is it|are we in|is this) (?:(?:already|still|the|yet|a|in) )*" + name
        + "(?: or (?:the |in the )?" + name
        + ")?(?: (?:yet|already|right now|now|there|here|time|still))*$|^(am) or pm$");
    const auto match = form.find(phrase);
    if (!match)
        return std::nullopt;
    const minutes time = timeOfDay(around);
    if (!match->texts[1].empty() || !match->texts[2].empty()) {
        const auto* const now =
            std::ranges::find_if(dayParts, [time](const DayPart& part) { return isIn(part, time); });
        return "It is " + clockNow(around) + (now == dayParts.end() ? "" : ", " + std::string(now->name)) + ".";
    }
    const auto* const asked = std::ranges::find(dayParts, match->texts[0], &DayPart::name);
    return std::string(isIn(*asked, time) ? "Yes, it is " : "No, it is ") + clockNow(around) + ".";
}

Said pastHour(const std::string& phrase, const LocalTime& around)
{
    static const Pattern form(
        "^(?:is it|have we|has it|did we|are we|is the time)(?: (?:already|yet|gone|passed|turned|struck|nearly|"
        "reached))* ?(past|after|passed|later than|gone|before|earlier than|already)? (?:already )?("
        + std::string(ClockTime::pattern) + ")(?: (?:yet|already|now|o clock))*$");
    const auto match = form.find(trimmed(SpokenPhrase::withDigits(phrase)));
    const auto times = match ? ClockTime::read(match->texts[1]) : std::vector<minutes>{};
    if (times.size() != 1 || phrase.find("nearly") != std::string::npos)
        return std::nullopt;
    const bool isBefore = match->texts[0] == "before" || match->texts[0] == "earlier than";
    const bool isSo = isBefore ? timeOfDay(around) < times.front() : timeOfDay(around) >= times.front();
    return std::string(isSo ? "Yes, it is " : "No, it is ") + clockNow(around) + ".";
}

Said inFullHours(const std::string& phrase, const LocalTime& around)
{
    static const Pattern form(
        "^(?:the )?(?:current )?(?:time|clock)(?: is it| it is)?(?: now)? (?:in|as|with|on) (?:an? |the )?(?:24|twenty "
        "?four)[ -]?"
        "(?:hours?|hrs?|h)?(?: (?:format|clock|time|system|mode))*$|^(?:24|twenty ?four)[ -]?(?:hours?|hrs?) time$"
        "|^(?:the )?time in military(?: time| format)?$|^military time$");
    if (!form.find(phrase))
        return std::nullopt;
    constexpr int minutesOfHour = 60;
    const auto time = timeOfDay(around).count();
    const auto digits = [](std::int64_t number) { return (number < 10 ? "0" : "") + std::to_string(number); };
    return "It is " + digits(time / minutesOfHour) + ":" + digits(time % minutesOfHour) + ".";
}

} // namespace

std::optional<std::string> PartOfDay::answer(const std::string& phrase, const LocalTime& around)
{
    for (const auto reader : {inPart, pastHour, inFullHours}) {
        if (auto said = reader(phrase, around))
            return said;
    }
    return std::nullopt;
}

} // namespace quorvell
