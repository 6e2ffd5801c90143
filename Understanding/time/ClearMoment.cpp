// SPDX-License-Identifier: MIT
#include "Understanding/time/ClearMoment.h"

#include "QuorvellCore/reminders/request/ReminderRequest.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/time/SpokenMoment.h"

namespace quorvell {

std::optional<ClearMoment> ClearMoment::in(std::string_view words, const LocalTime& around)
{
    const auto request = ReminderRequest::fromWords(words, around.now, around.calendar);
    if (request.verdict != ReminderRequest::Verdict::ready || !request.hasTime)
        return std::nullopt;
    static const Pattern fromNow(
        "\\b(?:in|an?|\\d+) (?:\\S+ ){0,3}(?:seconds?|minutes?|hours?|days?|weeks?)\\b", Pattern::Case::insensitive);
    const auto moment = SpokenMoment::read(words, around);
    return ClearMoment{request.task, fromNow.find(words) || request.repeatRule || (moment && moment->namesDay)};
}

} // namespace quorvell
