// SPDX-License-Identifier: MIT
#include "Understanding/skills/clock/NearDays.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/clock/ClockText.h"
#include "Understanding/skills/clock/DayWords.h"

#include <chrono>

namespace quorvell {

namespace {

using Said = std::optional<std::string>;

const std::string near =
    "(?:tomorrow|yesterday|(?:the )?day (?:after tomorrow|before yesterday)|(?:a |one )?(?:week|fortnight|month|year) "
    "(?:from|before) (?:today|tomorrow|now)|this time (?:next|last) \\w+)";

/// "Tomorrow", where the day has no name of its own.
std::string nearDayNamed(const std::string& words, const DayWords& day)
{
    static const Pattern isNear("^(?:today|" + near + ")$");
    return isNear.find(words) ? words : day.name;
}

} // namespace

std::optional<std::string> NearDays::date(const std::string& phrase, const LocalTime& around)
{
    static const std::string what = "(?:exact |full |calendar )?(?:date|day of the week|day of the month|weekday|day)";
    static const Pattern owned("^(?:the )?(" + near + ") ?s? " + what + "(?: is it| be)?$");
    static const Pattern behind("^(?:the )?" + what + "(?: is it| it is| is| was| will be| will| of| for)*(?: on)? ("
        + near + ")(?: be| is)?$");
    static const Pattern before("^(" + near + ")(?: is| was| will be)? (?:which |what )?" + what + "(?: is it)?$");
    for (const Pattern* form : {&owned, &behind, &before}) {
        const auto match = form->find(phrase);
        const auto day = match ? DayWords::read(match->texts[0], around) : std::nullopt;
        if (!day || day->isImpossible)
            continue;
        const auto today = ClockText::today(around);
        return withUpperCaseFirst(match->texts[0]) + (day->day < today ? " was " : " is ")
            + ClockText::day(day->day, today) + ".";
    }
    return std::nullopt;
}

std::optional<std::string> NearDays::isWeekday(const std::string& phrase, const LocalTime& around)
{
    static const Pattern form(
        "^(is|was|will|does|did|is it|was it) (.+?)(?: really| already| be| fall| falls| fell)*(?: "
        "on)? (?:an? )?(sunday|monday|tuesday|wednesday|thursday|friday|saturday)(?: (today|"
        "tomorrow|yesterday)| yet| already| this year)*$");
    // "Is it on friday" asks for something else.
    static const Pattern notDay("^(?:it|that|this|there|he|she|they|we|i)\\b| on (?:an? )?\\w+day\\b");
    const auto match = form.find(phrase);
    if (!match)
        return std::nullopt;
    const std::string& last = match->texts[3];
    const bool isIt = match->texts[1] == "it" && phrase.find(" on ") == std::string::npos;
    const std::string words = !isIt ? match->texts[1] : last.empty() ? "today" : last;
    if (!isIt && notDay.find(words))
        return std::nullopt;
    const bool isPast = match->texts[0].starts_with("was") || match->texts[0] == "did";
    const auto today = ClockText::today(around);
    const auto day = DayWords::read(words, around, isPast ? DayWords::Year::past : DayWords::Year::coming);
    if (!day || day->isImpossible || (isPast && day->day > today))
        return std::nullopt;
    const std::string name = nearDayNamed(words, *day);
    const bool isSo = lowerCased(ClockText::weekday(day->day)) == match->texts[2];
    return std::string(isSo ? "Yes, " : "No, ") + (name.empty() ? "that" : name) + (day->day < today ? " was " : " is ")
        + ClockText::day(day->day, today) + ".";
}

} // namespace quorvell
