// SPDX-License-Identifier: MIT
#include "Understanding/time/SpokenMoment.h"

#include "QuorvellCore/reminders/request/ReminderRequest.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/time/TimeVocabulary.h"
#include "Understanding/words/RequestText.h"

#include <algorithm>

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

/// Of what the words could mean, the first in the usual hours. What is over is no choice any more.
Instant usualOne(const ReminderRequest& request, const LocalTime& around)
{
    const auto usual = std::ranges::find_if(request.choices, [&](Instant choice) { return isUsual(choice, around); });
    return usual != request.choices.end() ? *usual : request.date;
}

/// As a reminder would be read, so that both believe and doubt the same words.
ReminderRequest requestIn(std::string_view words, const LocalTime& around)
{
    return ReminderRequest::fromWords(SpokenPhrase::withDigits(words), around.now, around.calendar);
}

} // namespace

std::optional<SpokenMoment> SpokenMoment::read(std::string_view words, const LocalTime& around)
{
    if (RequestText::isStory(words))
        return std::nullopt;
    const ReminderRequest request = requestIn(words, around);
    if (request.verdict == ReminderRequest::Verdict::needsTime || request.isEitherDay)
        return std::nullopt;
    const Instant date = usualOne(request, around);
    const DateParts parts =
        request.hasTime ? DateParts::from(date, around.calendar) : DateParts::fromDay(date, around.calendar);
    // "All day tomorrow" is tomorrow.
    static const Pattern allDay(
        "\\s*\\b(?:for |as an? )?(?:all day(?: long| event)?|the (?:whole|entire) day|(?:whole|entire|full)[- ]day)\\b",
        Pattern::caseless);
    const std::string rest = parts.allDay ? trimmed(allDay.replaceAll(request.task, "")) : request.task;
    return SpokenMoment{parts, rest, !request.hasTime || request.namesDay,
        request.repeatRule ? request.repeatRule->stored() : std::string()};
}

std::vector<DateParts> SpokenMoment::eitherDay(std::string_view words, const LocalTime& around)
{
    std::vector<DateParts> days;
    if (RequestText::isStory(words))
        return days;
    const ReminderRequest request = requestIn(words, around);
    if (!request.isEitherDay)
        return days;
    for (const Instant choice : request.choices) {
        const DateParts date =
            request.hasTime ? DateParts::from(choice, around.calendar) : DateParts::fromDay(choice, around.calendar);
        const bool isSameDay = !days.empty() && days.back().wholeDay() == date.wholeDay();
        if (!isSameDay)
            days.push_back(date);
        else if (isUsual(choice, around) && (days.back().hour < firstUsualHour || days.back().hour >= lastUsualHour))
            days.back() = date;
    }
    return days;
}

std::string SpokenMoment::wordsBeside(std::string_view words, const LocalTime& around)
{
    return RequestText::isStory(words) ? std::string(words) : requestIn(words, around).task;
}

} // namespace quorvell
