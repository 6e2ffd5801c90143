// SPDX-License-Identifier: MIT
#include "Understanding/skills/alarms/AlarmRule.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace quorvell {

namespace {

constexpr std::array<std::string_view, 7> ruleDays{
    "monday", "tuesday", "wednesday", "thursday", "friday", "saturday", "sunday"};
constexpr const char* anyDay = "((?:mon|tues|wednes|thurs|fri|satur|sun)day)s?";
constexpr const char* shortDay = "(?:mon|tues?|wed|thurs?|thu|fri|sat|sun)(?:days?)?";

std::size_t placeOf(std::string_view day)
{
    const std::string wanted = lowerCased(std::string(day.substr(0, 3)));
    return static_cast<std::size_t>(std::ranges::find_if(ruleDays, [&](std::string_view known) {
        return known.starts_with(wanted);
    }) - ruleDays.begin());
}

/// "every monday, tuesday and wednesday"
std::string everyOf(const std::vector<std::size_t>& places)
{
    std::string text = "every ";
    for (std::size_t index = 0; index < places.size(); ++index)
        text += std::string(index == 0              ? ""
                        : index + 1 < places.size() ? ", "
                                                    : " and ")
            + std::string(ruleDays[places[index]]);
    return text;
}

std::string put(const std::string& words, const TextRange& range, const std::string& with)
{
    return trimmed(trimmed(words.substr(0, range.start)) + " " + with + " " + trimmed(words.substr(range.end)));
}

/// "Mon wed fri" as days in full; a lone "sun" or "wed" stays, since it may be anything.
std::string withWholeDays(const std::string& words)
{
    static const Pattern row(
        "\\b" + std::string(shortDay) + "(?:(?:\\s*(?:,|/|&|-|–)\\s*|,? and |,? to | through | )" + shortDay + "\\b)+",
        Pattern::caseless);
    static const Pattern one(
        "\\b(mon|tue|wed|thu|fri|sat|sun)(?:rs?|nes|ur|s(?=day|\\b))?(?:day)?(s?)\\b", Pattern::caseless);
    const auto match = row.find(words);
    if (!match)
        return words;
    std::string days = words.substr(match->range.start, match->range.end - match->range.start);
    std::size_t from = 0;
    for (auto day = one.find(days, from); day; day = one.find(days, from)) {
        const std::string whole = std::string(ruleDays[placeOf(day->texts[0])]) + lowerCased(day->texts[1]);
        days = days.substr(0, day->range.start) + whole + days.substr(day->range.end);
        from = day->range.start + whole.size();
    }
    static const Pattern slash("\\s*/\\s*");
    return words.substr(0, match->range.start) + slash.replaceAll(days, ", ") + words.substr(match->range.end);
}

/// "Monday to thursday".
std::string withRange(const std::string& words)
{
    static const Pattern range("\\b(?:(?:from|every|each|on) )*" + std::string(anyDay)
            + "\\s*(?:to|till|until|through|thru|-|–)\\s*" + anyDay + "\\b",
        Pattern::caseless);
    const auto match = range.find(words);
    if (!match)
        return words;
    const std::size_t first = placeOf(match->texts[0]);
    const std::size_t last = placeOf(match->texts[1]);
    std::vector<std::size_t> places;
    for (std::size_t step = 0; step < ruleDays.size(); ++step) {
        places.push_back((first + step) % ruleDays.size());
        if (places.back() == last)
            break;
    }
    constexpr std::size_t workDays = 5;
    const bool isWorkWeek = first == 0 && places.size() == workDays;
    return put(words, match->range,
        isWorkWeek                             ? "every weekday"
            : places.size() == ruleDays.size() ? "every day"
                                               : everyOf(places));
}

/// "Every day except sundays", "but not on weekends".
std::string withoutDays(const std::string& words)
{
    static const Pattern form(
        "[,]?\\s*\\b(?:(?:on )?(?:every ?day|all days|daily|the week)[,]? )?(?:except|excluding|but not|but|"
        "not|besides|other than|apart from)(?: for)?(?: (?:on|at|every|the))*"
        " (?:(weekends?)|(weekdays)|"
            + std::string(anyDay) + "(?: and " + anyDay + ")?)",
        Pattern::caseless);
    static const Pattern daily("\\b(?:every ?day|daily|all days|each day)\\b\\s*", Pattern::caseless);
    const auto match = form.find(words);
    if (!match)
        return words;
    std::string rule = match->groups[0] ? "every weekday" : "every saturday and sunday";
    if (!match->groups[0] && !match->groups[1]) {
        std::vector<std::size_t> places;
        for (std::size_t place = 0; place < ruleDays.size(); ++place)
            if (place != placeOf(match->texts[2]) && (!match->groups[3] || place != placeOf(match->texts[3])))
                places.push_back(place);
        rule = everyOf(places);
    }
    return trimmed(daily.replaceAll(put(words, match->range, rule), ""));
}

} // namespace

std::string AlarmRule::inTime(const std::string& words)
{
    // "Weekly for friday 5 pm".
    static const Pattern weekly(
        "^(?:weekly|every week)\\b(?: on| for)? (?=" + std::string(anyDay) + "\\b)", Pattern::caseless);
    static const Pattern weekends("\\b(?:on |every |each )*(?:weekends|(?<=every )weekend)\\b", Pattern::caseless);
    // Nobody types commas: "every monday wednesday friday".
    static const Pattern row("\\b" + std::string(anyDay) + " (?=" + anyDay + "\\b)", Pattern::caseless);
    std::string rest = withoutDays(withRange(withWholeDays(weekly.replaceAll(words, "every "))));
    rest = weekends.replaceAll(rest, "every saturday and sunday");
    for (auto next = row.find(rest); next; next = row.find(rest)) {
        const std::size_t comma = next->range.end - 1; // In place of the blank.
        rest = rest.substr(0, comma) + ", " + rest.substr(comma + 1);
    }
    return rest;
}

} // namespace quorvell
