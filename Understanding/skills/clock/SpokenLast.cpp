// SPDX-License-Identifier: MIT
#include "Understanding/skills/clock/SpokenLast.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/clock/DayWords.h"
#include "Understanding/time/SpokenDays.h"
#include "Understanding/words/RequestText.h"

#include <array>
#include <chrono>

namespace quorvell {

namespace {

/// "2 december 2026"
std::string dateText(const DateParts& date)
{
    constexpr std::array months{"january", "february", "march", "april", "may", "june", "july", "august", "september",
        "october", "november", "december"};
    return std::to_string(date.day) + " " + months[static_cast<std::size_t>(date.month - 1) % months.size()] + " "
        + std::to_string(date.year);
}

std::string dateText(std::chrono::sys_days day)
{
    const std::chrono::year_month_day date(day);
    return dateText(DateParts{static_cast<int>(date.year()), static_cast<int>(static_cast<unsigned>(date.month())),
        static_cast<int>(static_cast<unsigned>(date.day())), 0, 0, true});
}

std::string inWords(const std::string& said, const LocalTime& around)
{
    std::string others;
    const auto days = RequestText::isStory(said) ? std::nullopt : SpokenDays::find(said, around, others);
    return days && days->isOneDay() ? dateText(days->from) : std::string();
}

std::string inReply(const std::string& reply, const LocalTime& around)
{
    static const Pattern date(
        "\\b(?:the )?(\\d{1,2})(?:st|nd|rd|th)? (?:of )?(January|February|March|April|May|June|July"
        "|August|September|October|November|December)(?: (\\d{4}))?\\b"
        "|\\b(January|February|March|April|May|June|July|August|September|October|November"
        "|December) (\\d{1,2})(?:st|nd|rd|th)?\\b");
    std::string found;
    for (const PatternMatch& match : date.findAll(reply)) {
        const std::string words = match.texts[0] + match.texts[4] + " " + match.texts[1] + match.texts[3]
            + (match.texts[2].empty() ? "" : " " + match.texts[2]);
        const auto day = DayWords::read(words, around);
        const std::string text = day && !day->isImpossible ? dateText(day->day) : std::string();
        if (text.empty() || (!found.empty() && text != found))
            return {};
        found = text;
    }
    return found;
}

} // namespace

std::optional<std::string> SpokenLast::question(std::string_view core)
{
    static const Pattern until("^(how (?:many|much) (?:more )?(?:days|weeks|months|nights|sleeps|hours|time)(?: "
                               "(?:is|are|do|does|have|left|there"
                               "|we|i|it|remain|more))*|how (?:long|far)(?: (?:is|it|there|do|we|i|have))*) "
                               "(?:(?:until|till|til|to|before|is) (?:then|that|that day|that date|this|that event)(?: "
                               "away| off| from now| from "
                               "today)?|(?:until|till|til|before))$"); // a last "then" is a closing word
    static const Pattern weekday(
        "^(?:what|which) (?:day of the week|weekday) (?:is|was|will) (?:that|then|it)(?: be| on)?$");
    const std::string phrase = RequestText::phrase(core);
    if (const auto match = until.find(phrase))
        return match->texts[0] + " until ";
    return weekday.find(phrase) ? std::optional<std::string>("what day of the week is ") : std::nullopt;
}

std::string SpokenLast::day(const RequestMemory& memory, const LocalTime& around)
{
    // Right behind an answer of the clock, the day is the one that it told.
    const bool isBehindAnswer = !memory.passing.skill.empty() && memory.passing.turn + 1 == memory.turn;
    const std::string told = isBehindAnswer ? inReply(memory.lastReply, around) : std::string();
    if (!told.empty())
        return told;
    std::string day = inWords(memory.words, around);
    return day.empty() ? inReply(memory.lastReply, around) : day;
}

} // namespace quorvell
