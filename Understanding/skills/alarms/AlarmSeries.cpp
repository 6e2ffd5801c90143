// SPDX-License-Identifier: MIT
#include "Understanding/skills/alarms/AlarmSeries.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/skills/alarms/AlarmHours.h"
#include "Understanding/skills/alarms/AlarmTraits.h"
#include "Understanding/skills/alarms/TimerLength.h"
#include "Understanding/time/SpokenDays.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/time/SpokenWhen.h"
#include "Understanding/words/RequestText.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <utility>

namespace quorvell {

namespace {

constexpr int alarmHour = 60; ///< Minutes.
constexpr int halfOfDay = 12 * alarmHour;
constexpr std::int64_t dayInMinutes = 24 * alarmHour;

using AlarmTimes = std::vector<std::string>;

constexpr const char* dayName =
    "\\b(?:(?:next|this|coming|on) )*(?:(?:mon|tues|wednes|thurs|fri|satur|sun)day|today|tomorrow)\\b";
constexpr const char* spacing = "\\b(?:apart|intervals?|in between|between (?:each|them))\\b";
constexpr const char* stretchOfDays =
    "\\b(?:(?:for|over) )?(?:the )?(?:(?:next|following|coming) "
    "(\\d{1,2}|two|three|four|five|six|seven|eight|nine|ten) "
    "(?:days|mornings|nights)|(all week|(?:the )?(?:whole|entire|rest of the) week|(?:every ?day|daily|each day|every "
    "morning) this week)|(?:for )?(a week)|(?:(?:every ?day|daily|each day|every morning) )?(?:until|till|through) "
    "((?:next |this )?(?:mon|tues|wednes|thurs|fri|satur|sun)day))\\b";

/// An hour of one of several, and the words that stand with it.
struct PartOfSeries {
    AlarmHours hour{};
    std::string extra{};
};

std::string clockText(const AlarmHours& hour)
{
    const std::string clock =
        lowerCased(SpokenWhen::clock(DateParts{2000, 1, 1, hour.from / alarmHour, hour.from % alarmHour}));
    return "at " + (hour.isOpen ? clock.substr(0, clock.find(' ')) : clock);
}

std::string withExtra(const std::string& clock, const std::string& extra)
{
    return AlarmTraits::ruleInWords(AlarmTraits::ruleInTime(extra.empty() ? clock : clock + " " + extra));
}

std::string withoutLinks(const std::string& words)
{
    static const Pattern links("^(?:(?:for|at|on|and|starting|from|beginning|the)\\b[,]?\\s*)+(?=\\d|$)"
                               "|(?:\\s*\\b(?:for|at|and|starting|starts|from|beginning|with))+$",
        Pattern::caseless);
    return trimmed(links.replaceAll(trimmed(words, " ,.:;"), ""), " ,.:;");
}

/// The hour in some words, and those around it; nothing where a number may be something else.
std::optional<PartOfSeries> partIn(std::string words)
{
    static const Pattern others(
        "\\d\\s*(?:minutes?|mins?|hours?|hrs?|days?|weeks?|months?|times?)\\b|\\d/\\d|\\d(?:st|nd|rd|th)\\b|\\d{4}",
        Pattern::caseless);
    static const Pattern number("\\d");
    auto hour = others.find(words) ? std::nullopt : AlarmHours::takeClock(words);
    if (!hour || number.find(words))
        return std::nullopt;
    return PartOfSeries{*std::move(hour), withoutLinks(words)};
}

/// Half of the day for hours that stand beside one that has it: "6, 6:15 and 6:30 am".
void shareHalves(std::vector<PartOfSeries>& parts)
{
    const auto close = [](AlarmHours& open, int from) {
        open.from = from;
        open.end = from + 1;
        open.isOpen = false;
    };
    const auto inHalfOf = [](const AlarmHours& open, const AlarmHours& other) {
        return open.from % halfOfDay + (other.from >= halfOfDay ? halfOfDay : 0);
    };
    for (std::size_t next = parts.size(); next-- > 1;) {
        AlarmHours& hour = parts[next - 1].hour;
        const AlarmHours& after = parts[next].hour;
        if (hour.isOpen && !after.isOpen && inHalfOf(hour, after) <= after.from)
            close(hour, inHalfOf(hour, after));
    }
    for (std::size_t place = 1; place < parts.size(); ++place) {
        AlarmHours& hour = parts[place].hour;
        const AlarmHours& before = parts[place - 1].hour;
        if (hour.isOpen && !before.isOpen && inHalfOf(hour, before) >= before.from)
            close(hour, inHalfOf(hour, before));
    }
}

bool isOfTimeOnly(const std::string& words, const LocalTime& around)
{
    const auto phrase = SpokenPhrase::read(withExtra("at 6 am", words), around);
    return phrase && RequestText::isIdle(phrase->task);
}

AlarmTimes ofHours(const std::string& words, const LocalTime& around)
{
    static const Pattern between("\\s*(?:,|&|;|\\band\\b|\\bthen\\b|\\bplus\\b)\\s*(?:(?:and|then|again|also) "
                                 ")*(?:(?:(?:the )?(?:another|one(?: more)?|"
                                 "(?:a |the )?(?:second|third|other|next))(?: one| alarm)?)\\b\\s*)?",
        Pattern::caseless);
    std::vector<PartOfSeries> parts;
    std::size_t start = 0;
    std::vector<TextRange> cuts;
    for (const auto& match : between.findAll(words))
        cuts.push_back(match.range);
    cuts.push_back({words.size(), words.size()});
    for (const TextRange& cut : cuts) {
        auto part = partIn(words.substr(start, cut.start - start));
        if (!part || parts.size() >= AlarmSeries::most)
            return {};
        parts.push_back(*std::move(part));
        start = cut.end;
    }
    shareHalves(parts);
    const auto hasExtra = [](const PartOfSeries& part) { return !part.extra.empty(); };
    const auto one = std::ranges::find_if(parts, hasExtra);
    const bool isOfAll = std::ranges::count_if(parts, hasExtra) == 1 && isOfTimeOnly(one->extra, around);
    const std::string shared = isOfAll ? one->extra : std::string();
    AlarmTimes times;
    for (const PartOfSeries& part : parts)
        times.push_back(withExtra(clockText(part.hour), isOfAll ? shared : part.extra));
    return times.size() > 1 ? times : AlarmTimes();
}

/// "Ten minutes apart from 6 am", "every ten minutes from 6 to 7 am".
AlarmTimes ofDistance(const std::string& words, int count)
{
    static const Pattern said(std::string(spacing) + "|\\bevery\\b|\\b(?:with|at|in|to|each)$", Pattern::caseless);
    static const Pattern end("\\b(?:to|until|till|and|through) (.+)$", Pattern::caseless);
    const auto length = TimerLength::read(words);
    if (!length)
        return {};
    const auto minutes = static_cast<int>(std::chrono::duration_cast<std::chrono::minutes>(length->length).count());
    std::string rest = trimmed(said.replaceAll(length->rest, ""), " ,.");
    std::optional<AlarmHours> last;
    if (const auto match = end.find(rest)) {
        std::string behind = match->texts[0];
        last = AlarmHours::takeClock(behind);
        rest = trimmed(rest.substr(0, match->range.start) + " " + behind);
    }
    auto first = partIn(rest);
    if (!first || minutes < 1 || minutes > 2 * alarmHour)
        return {};
    if (last) {
        std::vector<PartOfSeries> both{*first, {.hour = *last}};
        shareHalves(both);
        first = both.front();
        const int span = both.back().hour.from - first->hour.from;
        count = span > 0 ? span / minutes + 1 : 0;
    }
    AlarmTimes times;
    for (int index = 0; index < count && times.size() < AlarmSeries::most; ++index) {
        AlarmHours hour = first->hour;
        hour.from = (hour.from + index * minutes) % (hour.isOpen ? halfOfDay : static_cast<int>(dayInMinutes));
        times.push_back(withExtra(clockText(hour), first->extra));
    }
    return static_cast<int>(times.size()) == count && count > 1 ? times : AlarmTimes();
}

std::string onDay(const DateParts& day)
{
    return " on " + day.wholeDay().text();
}

/// "Thursday and friday at 7": each of these days, once.
AlarmTimes ofDays(const std::string& words)
{
    static const Pattern day(dayName, Pattern::caseless);
    static const Pattern links(
        "\\s*(?:,|&|\\band\\b)\\s*(?=,|&|and\\b|$|at\\b)|^\\s*(?:,|&|\\band\\b|on\\b)\\s*", Pattern::caseless);
    std::string rest = words;
    AlarmTimes days;
    for (auto match = day.find(rest); match; match = day.find(rest)) {
        days.push_back(rest.substr(match->range.start, match->range.end - match->range.start));
        rest = trimmed(RequestText::without(rest, match->range));
    }
    static const Pattern joint("(?:^|\\s)(?:,|&|and|on)(?=\\s|,|$)", Pattern::caseless);
    const auto part = partIn(trimmed(joint.replaceAll(links.replaceAll(rest, " "), " ")));
    if (!part || days.size() < 2 || days.size() > AlarmSeries::most)
        return {};
    AlarmTimes times;
    for (const std::string& one : days) // What it is called stands last.
        times.push_back(trimmed(clockText(part->hour) + " " + one + " " + part->extra));
    return times;
}

/// Once a day, from the next time that the hour comes.
AlarmTimes ofStretch(const std::string& words, const LocalTime& around)
{
    static const Pattern stretch(stretchOfDays, Pattern::caseless);
    const auto match = stretch.find(words);
    const auto part = match ? partIn(trimmed(RequestText::without(words, match->range))) : std::nullopt;
    if (!part)
        return {};
    constexpr int earliest = 5 * alarmHour; ///< Before it, an hour without its half is the afternoon's.
    const int minute = part->hour.from + (part->hour.isOpen && part->hour.from < earliest ? halfOfDay : 0);
    const DateParts now = DateParts::from(around.now, around.calendar);
    const bool isPast = now.hour * alarmHour + now.minute >= minute;
    const DateParts first = now.wholeDay().adding(isPast ? dayInMinutes : 0);
    constexpr int week = 7;
    DateParts last = first.adding((week - 1) * dayInMinutes);
    if (match->groups[0]) {
        last = first.adding((AlarmSeries::countIn(match->texts[0]) - 1) * dayInMinutes);
    } else if (!match->groups[2]) {
        const auto end = SpokenDays::read(match->groups[3] ? match->texts[3] : std::string("this week"), around);
        if (!end)
            return {};
        last = end->to.wholeDay();
    }
    AlarmTimes times;
    for (DateParts day = first; day <= last && times.size() <= AlarmSeries::most; day = day.adding(dayInMinutes))
        times.push_back(trimmed(clockText(part->hour) + onDay(day) + " " + part->extra));
    return times.size() <= AlarmSeries::most ? times : AlarmTimes();
}

} // namespace

bool AlarmSeries::isMeant(const std::string& words)
{
    static const Pattern apart(spacing, Pattern::caseless);
    static const Pattern hourly(
        "\\bevery (?:\\d+|one|two|five|ten|fifteen|twenty|thirty) ?min(?:ute)?s?\\b.*\\b(?:from|starting|between)\\b.*"
        "\\b(?:to|until|till|and)\\b",
        Pattern::caseless);
    static const Pattern stretch(stretchOfDays, Pattern::caseless);
    static const Pattern days(std::string(dayName) + "\\s*(?:,|&|,? and)\\s*(?:on )?" + dayName, Pattern::caseless);
    static const Pattern rule("\\b(?:every|each)\\b", Pattern::caseless);
    static const Pattern between("\\bbetween\\b", Pattern::caseless);
    static const Pattern denied("\\b(?:not|instead|rather|or)\\b", Pattern::caseless); // "Not 6:30, 9".
    if (denied.find(words))
        return false;
    static const Pattern halves("\\d ?[ap]m\\b[^,&]*(?:,|&|\\band\\b)[^,&]*\\d ?[ap]m\\b|\\d\\b ?(?:[ap]m)?,? and "
                                "(?:again|also|then) (?:at )?\\d",
        Pattern::caseless);
    static const Pattern halvesOfWeek("\\d ?(?:[ap]m)? (?:on |every )?(?:weekdays|weekends|work ?days|"
            + std::string(dayName) + "),? and (?:at )?\\d",
        Pattern::caseless);
    return halvesOfWeek.find(words) || apart.find(words) || (halves.find(words) && !between.find(words))
        || hourly.find(words) || stretch.find(words) || (days.find(words) && !rule.find(words))
        || (AlarmTraits::namesSeveral(words) && !between.find(words));
}

int AlarmSeries::countIn(const std::string& words)
{
    static const Pattern number(
        "\\b(?:(\\d{1,2})|(two|both)|(three)|(four)|(five)|(six)|(seven)|(eight)|(nine)|(ten))\\b", Pattern::caseless);
    const auto match = number.find(words);
    if (!match)
        return 0;
    if (match->groups[0])
        return std::atoi(match->texts[0].c_str());
    const auto said = std::ranges::find_if(match->groups, [](const auto& group) { return group.has_value(); });
    return static_cast<int>(said - match->groups.begin()) + 1;
}

AlarmTimes AlarmSeries::times(const std::string& said, int count, const LocalTime& around)
{
    constexpr std::size_t longest = 200;
    if (said.size() > longest)
        return {};
    static const Pattern apart(std::string(spacing) + "|\\bevery \\S+ ?min", Pattern::caseless);
    if (apart.find(said))
        return ofDistance(SpokenPhrase::withDigits(said), count);
    static const Pattern stretch(stretchOfDays, Pattern::caseless);
    const std::string words = SpokenPhrase::withDigits(said);
    if (stretch.find(words))
        return ofStretch(words, around);
    if (auto times = ofHours(words, around); !times.empty())
        return count == 0 || static_cast<int>(times.size()) == count ? times : AlarmTimes();
    return ofDays(words);
}

std::string AlarmSeries::following(const std::string& time, const DateParts& before, bool repeats)
{
    std::string rest = time;
    const auto hour = AlarmHours::takeClock(rest);
    static const Pattern day(
        std::string(dayName) + "|\\d{4}-\\d|\\b(?:every|each|tonight|week|weekend)\\b", Pattern::caseless);
    const int minute = before.hour * alarmHour + before.minute;
    if (!hour || !hour->isOpen)
        return time;
    AlarmHours closed = *hour;
    closed.isOpen = false;
    closed.from = hour->from % halfOfDay + (minute >= halfOfDay ? halfOfDay : 0);
    if (day.find(rest)) // Its day was said.
        return trimmed(clockText(closed) + " " + rest);
    if (repeats || closed.from <= minute)
        return time;
    return trimmed(clockText(closed) + onDay(before) + " " + rest);
}

} // namespace quorvell
