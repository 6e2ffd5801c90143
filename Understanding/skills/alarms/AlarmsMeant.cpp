// SPDX-License-Identifier: MIT
#include "Understanding/skills/alarms/AlarmsMeant.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "QuorvellCore/text/TextMatch.h"
#include "Understanding/time/SpokenDays.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/words/ListPlace.h"
#include "Understanding/words/RequestText.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string>

namespace quorvell {

namespace {

constexpr int minutesOfHour = 60;
constexpr int minutesOfHalf = 12 * minutesOfHour;

/// A time of day that the words name.
struct Clock {
    int minute = 0; ///< Of the day; of its half where that is open.
    bool isOpen = false; ///< Either half.
};

struct Stretch {
    int from;
    int end;
};

std::optional<Clock> takeClock(std::string& words)
{
    static const Pattern form(
        "\\b(?:at |for |of |from |to "
        ")?(?:(noon|midday)|(midnight)|(\\d{1,2})(?:[:.](\\d{2}))?(?!\\d|st\\b|nd\\b|rd\\b|th\\b)"
        "\\s*(?:([ap])\\.?\\s?m\\b\\.?|o['’]?clock)?)(?:\\s*in the (morning|afternoon|evening)|\\s*at (night))?",
        Pattern::caseless);
    const auto match = form.find(words);
    if (!match)
        return std::nullopt;
    const auto& part = match->texts;
    Clock clock;
    const std::string half = lowerCased(part[4]);
    const std::string of = lowerCased(part[5] + part[6]);
    if (!part[0].empty() || !part[1].empty()) {
        clock.minute = part[0].empty() ? 0 : minutesOfHalf;
    } else {
        const int hour = std::atoi(part[2].c_str());
        const int minute = part[3].empty() ? 0 : std::atoi(part[3].c_str());
        if (hour > 23 || minute >= minutesOfHour)
            return std::nullopt;
        const bool isLate = half == "p" || of == "afternoon" || of == "evening" || of == "night";
        const bool isSaid = !half.empty() || !of.empty() || hour > 12 || hour == 0;
        clock.isOpen = !isSaid;
        clock.minute = (isSaid && hour > 12 ? hour : hour % 12 + (isLate ? 12 : 0)) * minutesOfHour + minute;
    }
    words = trimmed(words.substr(0, match->range.start) + " " + words.substr(match->range.end));
    return clock;
}

struct Hours {
    int from;
    int to;
};

/// "Morning", not behind a day: that one reads with its day.
std::optional<Hours> takePart(std::string& words)
{
    static const Pattern form(
        "\\b(?:in the |of the |at )?(morning|afternoon|evening|night)s?\\b(?: hours?)?", Pattern::caseless);
    const auto match = form.find(words);
    if (!match)
        return std::nullopt;
    const std::string part = lowerCased(match->texts[0]);
    words = trimmed(words.substr(0, match->range.start) + " " + words.substr(match->range.end));
    return part == "morning" ? Hours{0, 12} : part == "afternoon" ? Hours{12, 18} : Hours{17, 24};
}

bool ringsOn(const AlarmItem& item, const SpokenDays& days, const LocalTime& around)
{
    constexpr int mostDays = 14;
    if (!item.thing.start)
        return false;
    if (days.hold(*item.thing.start))
        return true;
    if (!item.rule)
        return false;
    DateParts day = *item.thing.start;
    for (int step = 0; step < mostDays; ++step) { // A rule by months or years hardly belongs to an alarm.
        const auto local = Calendar::dayOf(day.year, day.month, day.day);
        const int weekday = local ? Calendar::weekday(*local) : 0;
        const bool isRule = item.rule->kind == ReminderRepeat::Kind::daily
            || (item.rule->kind == ReminderRepeat::Kind::weekdays && weekday > 1 && weekday < 7)
            || (item.rule->kind == ReminderRepeat::Kind::weekly
                && std::ranges::find(item.rule->weekdays, weekday) != item.rule->weekdays.end());
        if (isRule && days.hold(day) && day.instant(around.calendar))
            return true;
        day = day.adding(static_cast<std::int64_t>(24) * minutesOfHour);
    }
    return false;
}

bool isAt(const AlarmItem& item, const Clock& clock)
{
    if (!item.thing.start)
        return false;
    const int minute = item.thing.start->hour * minutesOfHour + item.thing.start->minute;
    return minute == clock.minute || (clock.isOpen && minute % minutesOfHalf == clock.minute % minutesOfHalf);
}

bool hasName(const AlarmItem& item, const std::string& words)
{
    const std::string title = " " + TextMatch::normalized(item.thing.title) + " ";
    const std::string wanted = TextMatch::normalized(words);
    for (std::size_t start = 0; start < wanted.size();) {
        const std::size_t end = std::min(wanted.find(' ', start), wanted.size());
        const std::string word = wanted.substr(start, end - start);
        start = end + 1;
        if (!RequestText::isIdle(word) && title.find(" " + word + " ") == std::string::npos)
            return false;
    }
    return true;
}

/// Whether it must ring again and again, and on which kind of days.
const Pattern* takeRule(std::string& words)
{
    static const Pattern form("\\b(?:on |the )?(?:(weekdays?|every weekday)|(weekends?)|(daily|every ?day|all days)"
                              "|(repeat(?:ing|ed)|recurring|regular))\\b",
        Pattern::caseless);
    static const Pattern weekdays("weekday");
    static const Pattern weekends("weekend|Saturday|Sunday");
    static const Pattern daily("every day|daily");
    static const Pattern any(".");
    const auto match = form.find(words);
    if (!match)
        return nullptr;
    words = trimmed(words.substr(0, match->range.start) + " " + words.substr(match->range.end));
    return !match->texts[0].empty() ? &weekdays
        : !match->texts[1].empty()  ? &weekends
        : !match->texts[2].empty()  ? &daily
                                    : &any;
}

/// "Between 6 and 9 am", "before 8", "after 5 pm", in minutes of the day, the end not included.
std::optional<Stretch> takeStretch(std::string& words)
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
    constexpr int lastOfDay = 24 * minutesOfHour;
    constexpr int early = 5 * minutesOfHour; // Before it, an hour without its half is the afternoon's.
    const auto minuteOf = [](const Clock& clock) {
        return clock.minute + (clock.isOpen && clock.minute < early ? minutesOfHalf : 0);
    };
    if (!part[3].empty())
        return Stretch{0, minuteOf(*end)};
    if (!part[5].empty())
        return Stretch{minuteOf(*end) + 1, lastOfDay};
    const int until = minuteOf(*end);
    int from = start->minute;
    if (start->isOpen && from + minutesOfHalf < until) // "From 2 to 4 pm".
        from += minutesOfHalf;
    return Stretch{from, until + 1};
}

/// "The last timer" is the one that was set last, "the last alarm" the latest of the day.
std::vector<AlarmItem> setLast(const std::vector<AlarmItem>& items, const std::string& words)
{
    static const Pattern last("^(?:the )?(?:last|latest|newest|most recent)(?: one)?$", Pattern::caseless);
    static const Pattern set("^(?:the )?(?:(?:last|latest|newest|most recent)(?: one)? (?:that )?(?:i|you) (?:just )?"
                             "(?:set|made|started|added|created)|newest|most recent)(?: one)?$",
        Pattern::caseless);
    const bool areTimers = std::ranges::all_of(items, &AlarmItem::isTimer);
    const auto newest = std::ranges::find_if(items, &AlarmItem::wasSetLast);
    const bool isMeant = set.find(words) || (areTimers && last.find(words));
    return isMeant && newest != items.end() ? std::vector{*newest} : std::vector<AlarmItem>();
}

enum class End { earliest, latest };

/// "The earliest one tomorrow"; alone it is a place in the list.
std::optional<End> takeEnd(std::string& words)
{
    static const Pattern form(
        "^(?:the )?(?:(earliest|soonest|first)|latest|last)(?: (?:one|of|on|for|in))* (?=\\S)", Pattern::caseless);
    const auto match = form.find(words);
    if (!match)
        return std::nullopt;
    words = words.substr(match->range.end);
    return match->texts[0].empty() ? End::latest : End::earliest;
}

} // namespace

AlarmsMeant AlarmsMeant::among(const std::vector<AlarmItem>& items, std::string_view which, const LocalTime& around)
{
    AlarmsMeant meant{.items = items};
    std::string words = SpokenPhrase::withDigits(trimmed(which, " ,.?!"));
    if (RequestText::isIdle(words) && words != "next" && words != "first")
        return meant;
    meant.isNarrowed = true;
    static const Pattern next("^(?:the )?(?:next|coming|first|earliest)(?: one)?$", Pattern::caseless);
    if (auto newest = setLast(items, words); !newest.empty()) {
        meant.items = std::move(newest);
        return meant;
    }
    const auto place = next.find(words) ? std::optional(ListPlace{0}) : ListPlace::read(words);
    if (place) {
        const auto index = place->among(items.size());
        meant.items = items.empty() || !index ? std::vector<AlarmItem>() : std::vector{items[*index]};
        return meant;
    }
    const auto end = takeEnd(words);
    const Pattern* rule = takeRule(words);
    const auto stretch = takeStretch(words);
    std::string others;
    const auto days = SpokenDays::find(words, around, others);
    if (days)
        words = others;
    const auto clock = takeClock(words);
    const auto part = takePart(words);
    const bool isNamed = !RequestText::isIdle(words);
    std::erase_if(meant.items, [&](const AlarmItem& item) {
        const int hour = item.thing.start ? item.thing.start->hour : -1;
        const int minute = item.thing.start ? hour * minutesOfHour + item.thing.start->minute : -1;
        return (rule && !rule->find(item.often)) || (stretch && (minute < stretch->from || minute >= stretch->end))
            || (days && !ringsOn(item, *days, around)) || (clock && !isAt(item, *clock))
            || (part && (hour < part->from || hour >= part->to)) || (isNamed && !hasName(item, words));
    });
    if (end && meant.items.size() > 1)
        meant.items = {*end == End::earliest ? meant.items.front() : meant.items.back()};
    meant.isUnderstood = !isNamed || !meant.items.empty();
    return meant;
}

} // namespace quorvell
