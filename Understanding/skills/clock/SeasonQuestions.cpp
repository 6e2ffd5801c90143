// SPDX-License-Identifier: MIT
// The beginnings of seasons are the mean equinoxes and solstices of J. Meeus, Astronomical Algorithms, chapter 27,
// without the periodic terms: within a quarter of an hour, so that the day is theirs but for one at midnight.
#include "Understanding/skills/clock/SeasonQuestions.h"

#include "QuorvellCore/reminders/calendar/FeastDays.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/clock/ClockText.h"
#include "Understanding/skills/clock/DayWords.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>

namespace quorvell {

namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year_month_day;
using Said = std::optional<std::string>;

struct Season {
    std::string_view name;
    std::string_view turn; ///< What it begins with.
    std::array<double, 5> terms; ///< Of the Julian day, in powers of the millennia since 2000.
};

constexpr std::array seasons{
    Season{"spring", "equinox", {2451623.80984, 365242.37404, 0.05169, -0.00411, -0.00057}},
    Season{"summer", "solstice", {2451716.56767, 365241.62603, 0.00325, 0.00888, -0.00030}},
    Season{"autumn", "equinox", {2451810.21715, 365242.01767, -0.11575, 0.00337, 0.00078}},
    Season{"winter", "solstice", {2451900.05952, 365242.74049, -0.06223, -0.00823, 0.00032}},
};

Instant beginOf(const Season& season, int year)
{
    constexpr double epoch = 2440587.5; // the Julian day of the first instant of 1970
    constexpr double millisecondsOfDay = 86'400'000;
    const double millennia = (year - 2000) / 1000.0;
    double day = 0;
    for (std::size_t power = season.terms.size(); power-- > 0;)
        day = day * millennia + season.terms.at(power);
    return Instant(std::chrono::milliseconds(static_cast<std::int64_t>((day - epoch) * millisecondsOfDay)));
}

Said season(const std::string& phrase, const LocalTime& around)
{
    static const Pattern form(
        "^(?:when (?:is|does|will|do)(?: it)?(?: be| become)? |when |(?:the )?(?:first|official) day of |date of "
        "|start of )(?:the )?"
        "(?:(?:first|official|next) (?:day|start) of |start of |beginning of )?(spring|summer|autumn|fall|winter)"
        "(?: (?:equinox|solstice|officially|start|starts|begin|begins|come|arrive|this year|season))*(?: (\\d{4}))?$");
    const auto match = form.find(phrase);
    if (!match)
        return std::nullopt;
    const std::string said = match->texts[0] == "fall" ? "autumn" : match->texts[0];
    const auto* const found = std::ranges::find(seasons, said, &Season::name);
    const sys_days today = ClockText::today(around);
    int year =
        match->texts[1].empty() ? static_cast<int>(year_month_day(today).year()) : std::atoi(match->texts[1].c_str());
    constexpr int first = 1000; // the terms hold from there to 3000
    constexpr int last = 3000;
    if (found == seasons.end() || year < first || year > last)
        return std::nullopt;
    const auto dayIn = [&](int of) { return sys_days(around.calendar.day(beginOf(*found, of)).time_since_epoch()); };
    if (match->texts[1].empty() && dayIn(year) < today)
        ++year;
    return "In the northern half of the world " + said + (dayIn(year) < today ? " began" : " begins") + " with the "
        + std::string(found->turn) + ", on " + ClockText::day(dayIn(year), today) + ".";
}

/// "When do the clocks go back"
Said clockChange(const std::string& phrase, const LocalTime& around)
{
    static const Pattern form(
        "^(?:when|on what (?:day|date)|day|date|do|does|will|is|are|have) (?:do |does |will |is |are |did "
        ")?(?:we |it |you "
        ")?(?:have |on |in |observe )?(?:the |our |your |my "
        ")?(?:next )?(?:clocks?|daylight savings?(?: time)?|dst|summer time|winter time|time change|clock change)\\b"
        "(?: "
        "(?:time|go|going|goes|change|changes|changed|switch|move|turn|turned|set|be|put|end|ends|start|starts|begin|"
        "begins|ending|starting|beginning|over|in|effect|on|now|currently|due|active|here"
        "|happen|spring|fall|to|back|backwards?|ahead|forwards?|next|this|weekend|week|month|year|an|one|hour))*$");
    if (!form.find(phrase))
        return std::nullopt;
    static const Pattern back("\\b(?:back|backwards?|end|ends|ending|over|fall|winter)\\b");
    static const Pattern ahead("\\b(?:forwards?|ahead|start|starts|starting|begin|begins|beginning|spring|summer)\\b");
    const bool wantsBack = back.find(phrase).has_value();
    const bool wantsAhead = !wantsBack && ahead.find(phrase);
    constexpr int mostDays = 400;
    const auto offset = [&](Instant at) {
        return around.calendar.localTime(at).time_since_epoch() - at.time_since_epoch();
    };
    Instant day = around.calendar.startOfDay(around.now);
    for (int count = 0; count < mostDays; ++count) {
        const Instant next = around.calendar.addingDays(day, days(1));
        const auto change = offset(next) - offset(day);
        const bool isWanted = change.count() > 0 ? !wantsBack : !wantsAhead;
        if (change.count() != 0 && isWanted) {
            const auto length = std::chrono::duration_cast<std::chrono::minutes>(std::chrono::abs(change));
            return "The clocks here go " + std::string(change.count() > 0 ? "forward" : "back") + " by "
                + ClockText::length(length) + " on "
                + ClockText::day(sys_days(around.calendar.day(day).time_since_epoch()), ClockText::today(around)) + ".";
        }
        day = next;
    }
    return "The clocks do not change here in the coming year.";
}

/// "Is today a holiday?"
Said holiday(const std::string& phrase, const LocalTime& around)
{
    static const Pattern form(
        "^(?:is|are|will) (.+?)(?: be)? (?:an? |any )?(?:(?:bank|public|national|federal|school|official) "
        ")?(?:holidays?|feast|special day)$");
    const auto match = form.find(phrase);
    const sys_days today = ClockText::today(around);
    const std::string words = match ? match->texts[0] : std::string();
    const auto named = words == "today" || words == "it" || words == "it today" ? std::optional(DayWords{today})
        : words.empty()                                                         ? std::nullopt
                                                                                : DayWords::read(words, around);
    if (!named || named->isImpossible)
        return std::nullopt;
    const auto feasts = FeastDays::on(named->day);
    const std::string day = named->day == today ? "Today" : withUpperCaseFirst(ClockText::day(named->day, today));
    if (feasts.empty())
        return day
            + " is no feast that I know. Public holidays differ from place to place, and I keep no list of them.";
    return day + " is " + ClockText::list(feasts) + ". Whether that is a holiday differs from place to place.";
}

} // namespace

std::optional<sys_days> SeasonQuestions::beginning(const std::string& season, const LocalTime& around)
{
    const auto* const found = std::ranges::find(seasons, season == "fall" ? "autumn" : season, &Season::name);
    if (found == seasons.end())
        return std::nullopt;
    const sys_days today = ClockText::today(around);
    const int year = static_cast<int>(year_month_day(today).year());
    const auto dayIn = [&](int of) { return sys_days(around.calendar.day(beginOf(*found, of)).time_since_epoch()); };
    return dayIn(year) > today ? dayIn(year) : dayIn(year + 1);
}

std::optional<std::string> SeasonQuestions::answer(const std::string& phrase, const LocalTime& around)
{
    for (const auto reader : {season, clockChange, holiday}) {
        if (auto said = reader(phrase, around))
            return said;
    }
    return std::nullopt;
}

} // namespace quorvell
