// SPDX-License-Identifier: MIT
#include "LiveService/rules/SpokenDays.h"

#include "LiveService/rules/RequestText.h"
#include "LiveService/rules/TimeVocabulary.h"
#include "LiveService/rules/TimeWords.h"
#include "QuorvellCore/reminders/DateParts.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/RequestWords.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <vector>

namespace quorvell {

namespace {

constexpr auto caseless = Pattern::Case::insensitive;
constexpr int firstUsualHour = 8;
constexpr int lastUsualHour = 20;
constexpr std::chrono::days lookAhead{31};

struct PartOfDay {
    std::string_view name;
    const char* from;
    const char* to;
};

constexpr std::array partsOfDay{PartOfDay{"morning", "05:00", "12:00"}, PartOfDay{"afternoon", "12:00", "18:00"},
    PartOfDay{"evening", "18:00", "23:59"}, PartOfDay{"night", "18:00", "23:59"}};

std::string dayText(Instant instant, const RuleSurroundings& around)
{
    return DateParts::fromDay(instant, around.calendar).text();
}

std::string dayAfter(int days, const RuleSurroundings& around)
{
    return dayText(around.calendar.addingDays(around.now, std::chrono::days(days)), around);
}

/// 0 on a Monday to 6 on a Sunday.
int daysSinceMonday(const RuleSurroundings& around)
{
    return (around.calendar.parts(around.now).weekday + 5) % 7;
}

std::optional<SpokenDays> severalDays(const std::string& words, const RuleSurroundings& around)
{
    static const Pattern week(
        "^(?:for |of |in )?(?:this|the|my|my whole|the rest of (?:the|this)) week(?: ahead)?$", caseless);
    static const Pattern next("^(?:for |in )?next week$", caseless);
    static const Pattern weekend("^(?:for |on |at )?(?:this|the|my) weekend$", caseless);
    static const Pattern soon("^(?:for |in |over )?the next (?:few|couple of) days$", caseless);
    const int since = daysSinceMonday(around);
    if (week.find(words))
        return SpokenDays{dayAfter(0, around), dayAfter(6 - since, around), "this week"};
    if (next.find(words))
        return SpokenDays{dayAfter(7 - since, around), dayAfter(13 - since, around), "next week"};
    if (weekend.find(words))
        return SpokenDays{dayAfter(std::max(5 - since, 0), around), dayAfter(6 - since, around), "at the weekend"};
    if (soon.find(words))
        return SpokenDays{dayAfter(0, around), dayAfter(2, around), "in the next few days"};
    return std::nullopt;
}

/// The part of the day at the end of the words, which it takes away.
const PartOfDay* takePart(std::string& words)
{
    static const Pattern part(
        "(?:^|\\s+)(?:this |in the |at |my )?(morning|afternoon|evening|night)$|(?<=^to)night$", caseless);
    const auto match = part.find(words);
    if (!match)
        return nullptr;
    const std::string name = match->texts[0].empty() ? "night" : match->texts[0];
    words = trimmed(words.substr(0, match->range.start));
    if (words == "to" || words == "for to")
        words = "today";
    const auto row = std::ranges::find(partsOfDay, name, &PartOfDay::name);
    return row != partsOfDay.end() ? row : nullptr;
}

int hourOf(Instant instant, const RuleSurroundings& around)
{
    return around.calendar.parts(instant).hour;
}

bool isUsual(Instant instant, const RuleSurroundings& around)
{
    const int hour = hourOf(instant, around);
    return hour >= firstUsualHour && hour < lastUsualHour;
}

/// Of what the words could mean, the first in the usual hours.
Instant usualOne(const ReminderPhrase& phrase, const RuleSurroundings& around)
{
    std::vector<Instant> choices{phrase.date};
    choices.insert(choices.end(), phrase.alternatives.begin(), phrase.alternatives.end());
    const auto usual =
        std::ranges::find_if(choices, [&](Instant choice) { return isUsual(choice, around) && choice > around.now; });
    return phrase.isAmbiguous() && usual != choices.end() ? *usual : phrase.date;
}

} // namespace

std::optional<SpokenDays> SpokenDays::read(std::string_view spoken, const RuleSurroundings& around)
{
    static const Pattern lead("^(?:for|of|in)\\s+(?!the (?:morning|afternoon|evening)$)", caseless);
    std::string words = lead.replaceAll(trimmed(spoken), "");
    if (auto several = severalDays(words, around))
        return several;
    const std::string named = words;
    const PartOfDay* part = takePart(words);
    if (words.empty() && part)
        words = "today";
    static const Pattern today(
        "^(?:today|now|my (?:whole )?day|the day(?: ahead)?|the rest of (?:the|my) day)$", caseless);
    std::string day;
    if (today.find(words)) {
        day = dayAfter(0, around);
    } else {
        const auto phrase = TimeWords::phraseIn(words, around);
        if (!phrase || phrase->hasTime || !phrase->task.empty() || phrase->repeatRule)
            return std::nullopt;
        day = dayText(phrase->date, around);
    }
    if (!part)
        return SpokenDays{day, day, named};
    return SpokenDays{day + " " + part->from, day + " " + part->to, named};
}

std::optional<SpokenDays> SpokenDays::find(std::string_view said, const RuleSurroundings& around, std::string& others)
{
    const RequestWords words(said);
    const std::size_t count = std::min(words.size(), TimeWords::longest);
    for (std::size_t length = count; length > 0; --length) {
        for (std::size_t start = 0; start + length <= count; ++start) {
            auto days = TimeVocabulary::mayBeTime(words, start, start + length)
                ? read(words.said(start, start + length), around)
                : std::nullopt;
            if (!days)
                continue;
            others = trimmed(words.said(0, start) + " " + words.said(start + length, words.size()));
            return days;
        }
    }
    others = words.said();
    return std::nullopt;
}

SpokenDays SpokenDays::ahead(const RuleSurroundings& around)
{
    return {dayAfter(0, around), dayAfter(static_cast<int>(lookAhead.count()), around), "in the next month"};
}

std::optional<SpokenMoment> SpokenMoment::read(std::string_view words, const RuleSurroundings& around)
{
    static const Pattern day("\\b(?:today|tonight|tomorrow|" + std::string(TimeVocabulary::weekday)
            + "|next|week|in \\d+|in an?"
              "|january|february|march|april|may|june|july|august|september|october|november|december"
              "|\\d+(?:st|nd|rd|th)|days?)\\b",
        caseless);
    const auto phrase = TimeWords::phraseIn(words, around);
    if (!phrase)
        return std::nullopt;
    const Instant date = usualOne(*phrase, around);
    const DateParts parts =
        phrase->hasTime ? DateParts::from(date, around.calendar) : DateParts::fromDay(date, around.calendar);
    return SpokenMoment{parts.text(), phrase->task, !phrase->hasTime || day.find(phrase->timeWords).has_value(),
        phrase->repeatRule ? phrase->repeatRule->stored() : std::string()};
}

std::optional<std::string> SpokenMoment::movedTo(
    std::string_view words, const std::string& old, const RuleSurroundings& around)
{
    constexpr std::size_t dayOnly = 10; ///< Length of "2026-11-22".
    const auto moment = read(words, around);
    if (!moment)
        return std::nullopt;
    const bool hasTime = moment->date.size() > dayOnly;
    if (!moment->namesDay && hasTime && old.size() >= dayOnly)
        return old.substr(0, dayOnly) + moment->date.substr(dayOnly);
    return !hasTime && old.size() > dayOnly ? moment->date + old.substr(dayOnly) : moment->date;
}

std::optional<SpokenLength> SpokenLength::read(std::string_view spoken)
{
    struct Row {
        Pattern pattern;
        int minutes; ///< Of the whole, or of each of the number in the first group.
    };
    static const Row rows[] = {
        {Pattern("\\b(?:for |of )?an hour and a half\\b", caseless), 90},
        {Pattern("\\b(?:for |of )?(?:a )?half (?:an |a )?hour\\b", caseless), 30},
        {Pattern("\\b(?:for |of )?three quarters of an hour\\b", caseless), 45},
        {Pattern("\\b(?:for |of )?(?:a )?quarter of an hour\\b", caseless), 15},
        {Pattern("\\b(?:for |of )?(?:a |an )?(\\d{1,3})[ -]?(?:minutes?|mins?)\\b", caseless), 1},
        {Pattern("\\b(?:for |of )?(?:a |an )?(\\d{1,2})[ -]?hours?\\b", caseless), 60},
        {Pattern("\\b(?:for |of )?(?:(?:an|one|a free|a|free) )?hour\\b", caseless), 60},
    };
    if (RequestText::isStory(spoken))
        return std::nullopt;
    const std::string words = RequestText::withDigits(spoken);
    for (const Row& row : rows) {
        const auto match = row.pattern.find(words);
        if (!match)
            continue;
        const bool hasNumber = !match->texts.empty() && !match->texts[0].empty();
        const int minutes = row.minutes * (hasNumber ? std::atoi(match->texts[0].c_str()) : 1);
        return SpokenLength{minutes, RequestText::without(words, match->range)};
    }
    return std::nullopt;
}

} // namespace quorvell
