// SPDX-License-Identifier: MIT
#include "Understanding/time/SpokenMoment.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/time/TimeVocabulary.h"

#include <algorithm>
#include <vector>

namespace quorvell {

namespace {

constexpr int firstUsualHour = 8;
constexpr int lastUsualHour = 20;

int hourOf(Instant instant, const LocalTime& around)
{
    return around.calendar.parts(instant).hour;
}

bool isUsual(Instant instant, const LocalTime& around)
{
    const int hour = hourOf(instant, around);
    return hour >= firstUsualHour && hour < lastUsualHour;
}

/// Of what the words could mean, the first in the usual hours.
Instant usualOne(const ReminderPhrase& phrase, const LocalTime& around)
{
    std::vector<Instant> choices{phrase.date};
    choices.insert(choices.end(), phrase.alternatives.begin(), phrase.alternatives.end());
    const auto usual =
        std::ranges::find_if(choices, [&](Instant choice) { return isUsual(choice, around) && choice > around.now; });
    return phrase.isAmbiguous() && usual != choices.end() ? *usual : phrase.date;
}

} // namespace

std::optional<SpokenMoment> SpokenMoment::read(std::string_view words, const LocalTime& around)
{
    static const Pattern day("\\b(?:today|tonight|tomorrow|" + std::string(TimeVocabulary::weekday)
            + "|next|week|in \\d+|in an?"
              "|january|february|march|april|may|june|july|august|september|october|november|december"
              "|\\d+(?:st|nd|rd|th)|days?)\\b",
        Pattern::caseless);
    const auto phrase = SpokenPhrase::read(words, around);
    if (!phrase)
        return std::nullopt;
    const Instant date = usualOne(*phrase, around);
    const DateParts parts =
        phrase->hasTime ? DateParts::from(date, around.calendar) : DateParts::fromDay(date, around.calendar);
    return SpokenMoment{parts, phrase->task, !phrase->hasTime || day.find(phrase->timeWords).has_value(),
        phrase->repeatRule ? phrase->repeatRule->stored() : std::string()};
}

} // namespace quorvell
