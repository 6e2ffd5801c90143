// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/reading/EventSpan.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/time/SpokenMoment.h"
#include "Understanding/time/TimeVocabulary.h"
#include "Understanding/words/RequestText.h"

#include <cctype>
#include <cstdlib>

namespace quorvell {

const std::string EventSpan::monthName(
    "(?:jan(?:uary)?|feb(?:ruary)?|mar(?:ch)?|apr(?:il)?|may|june?|july?|aug(?:ust)?|sept?(?:ember)?|oct(?:ober)?|"
    "nov(?:ember)?|dec(?:ember)?)");

namespace {

/// The half of the day of a start that has none, where the end is in `half`: "from 11 to 1 pm" begins in the morning.
std::string halfOfStart(const std::string& start, const std::string& end, const std::string& half)
{
    constexpr int halfDay = 12;
    const int from = std::atoi(start.c_str()) % halfDay;
    const int to = std::atoi(end.c_str()) % halfDay;
    const bool areNumbers = std::isdigit(static_cast<unsigned char>(start.front())) != 0
        && std::isdigit(static_cast<unsigned char>(end.front())) != 0;
    if (half.empty() || !areNumbers || from <= to)
        return half;
    return half.front() == 'p' || half.front() == 'P' ? "am" : "pm";
}

/// Two hours: the texts are the first, its half of the day, the second, its half. Without a leading word they have to
/// look like hours: "10am to 4pm", "9:30-11"; "5 to 6 pm" may be five minutes to six.
std::optional<PatternMatch> hoursIn(const std::string& words)
{
    static const std::string clock =
        "((?:half past |quarter (?:past|to) )?(?:\\d{1,2}(?:[:.]\\d{2})?|one|two|three|four|five|six"
        "|seven|eight|nine|ten|eleven|twelve))(?: ?([ap]\\.?m\\.?))?";
    static const Pattern led(
        "\\b(?:from|between) " + clock + "(?: (?:to|till|until|and) | ?[-–] ?)" + clock + "(?![\\w:])",
        Pattern::caseless);
    static const Pattern linked(
        "(?<![-\\d/.:])\\b(?:at )?" + clock + " (?:to|till|until) " + clock + "(?![\\w:/-])", Pattern::caseless);
    static const Pattern dashed(
        "(?<![-\\d/.:])\\b(?:at )?" + clock + " ?[-–] ?" + clock + "(?![\\w:/-])", Pattern::caseless);
    // "Tuesday 10 to 12"; "at 10 to 12" is ten minutes to.
    static const Pattern behindDay("(?<=day |day, |morrow |(?:st|nd|rd|th) )(\\d{1,2})() (?:to|till|until) "
                                   "(\\d{1,2})(?: ?([ap]\\.?m\\.?))?(?![\\w:/-])",
        Pattern::caseless);
    if (auto match = led.find(words))
        return match;
    if (auto match = behindDay.find(words))
        return match;
    const auto isHour = [](const PatternMatch& match) {
        return !match.texts[1].empty() || match.texts[0].find_first_of(":.") != std::string::npos;
    };
    if (auto match = linked.find(words); match && isHour(*match))
        return match;
    auto match = dashed.find(words);
    return match && (isHour(*match) || !match->texts[3].empty()) ? match : std::nullopt;
}

} // namespace

std::string EventSpan::takeEnd(std::string& words)
{
    const auto match = hoursIn(words);
    if (!match)
        return {};
    const std::string half =
        match->texts[1].empty() ? halfOfStart(match->texts[0], match->texts[2], match->texts[3]) : match->texts[1];
    const std::string end = "at " + match->texts[2] + (match->texts[3].empty() ? "" : " " + match->texts[3]);
    words = words.substr(0, match->range.start) + "at " + match->texts[0] + (half.empty() ? "" : " " + half)
        + words.substr(match->range.end);
    return end;
}

std::optional<DateParts> EventSpan::endOn(const DateParts& start, const std::string& endWords, const LocalTime& around)
{
    const auto end = SpokenMoment::read(endWords, around);
    if (!end || end->date.allDay || start.allDay)
        return std::nullopt;
    static const Pattern exact("^at (0\\d|1[3-9]|2[0-3])[:.](\\d{2})$"); // "06:00" is no evening.
    const auto clock = exact.find(endWords);
    DateParts date = start;
    date.hour = clock ? std::atoi(clock->texts[0].c_str()) : end->date.hour;
    date.minute = clock ? std::atoi(clock->texts[1].c_str()) : end->date.minute;
    constexpr int minutesOfDay = 24 * 60;
    constexpr int longestNight = 10 * 60;
    if (date > start)
        return date;
    const DateParts nextDay = date.adding(minutesOfDay);
    return start.adding(longestNight) > nextDay ? std::optional(nextDay) : std::nullopt;
}

std::optional<DateParts> EventSpan::dayIn(const std::string& words, const LocalTime& around)
{
    const bool isNamedDay = words.find_first_of("0123456789") != std::string::npos;
    const auto moment = SpokenMoment::read((isNamedDay ? "on " : "") + words, around);
    const bool isDay = moment && moment->date.allDay && moment->rest.empty() && moment->repeat.empty();
    return isDay ? std::optional(moment->date) : std::nullopt;
}

std::optional<EventSpan> EventSpan::takeDays(std::string& words, const LocalTime& around)
{
    static const std::string day = "(today|tomorrow|(?:next |this )?" + std::string(TimeVocabulary::weekday)
        + "|(?:the )?\\d{1,2}(?:st|nd|rd|th)(?: (?:of )?" + monthName + ")?|\\d{1,2} " + monthName + "|" + monthName
        + " \\d{1,2}(?:st|nd|rd|th)?)";
    static const Pattern range(
        "\\b(?:from )?" + day + " (?:to|till|until|through) " + day + "(?![\\w'’])", Pattern::caseless);
    static const Pattern named(monthName, Pattern::caseless);
    static const Pattern number("\\d");
    // "From 10 to 14 december": that is no hour.
    static const Pattern bare(
        "\\b(?:from |between )(\\d{1,2}) (?:to|till|until|through|and) (?=\\d{1,2}(?:st|nd|rd|th)? (?:of )?" + monthName
            + "\\b)",
        Pattern::caseless);
    if (const auto first = bare.find(words))
        words = words.substr(0, first->range.start) + "from the " + first->texts[0] + "th to "
            + words.substr(first->range.end);
    const auto match = range.find(words);
    if (!match)
        return std::nullopt;
    const auto monthOfLast = named.find(match->texts[1]);
    const bool takesMonth = monthOfLast && number.find(match->texts[0]) && !named.find(match->texts[0]);
    const std::string said = match->texts[1];
    const std::string of = takesMonth
        ? " of " + said.substr(monthOfLast->range.start, monthOfLast->range.end - monthOfLast->range.start)
        : "";
    const auto first = dayIn(match->texts[0] + of, around);
    const auto begin = first ? first->instant(around.calendar) : std::nullopt;
    const auto last = begin ? dayIn(said, LocalTime{*begin, around.calendar}) : std::nullopt;
    if (!last || !(*last > *first))
        return std::nullopt;
    words = RequestText::without(words, match->range);
    return EventSpan{*first, *last};
}

} // namespace quorvell
