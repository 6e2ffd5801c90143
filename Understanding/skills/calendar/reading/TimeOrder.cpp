// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/reading/TimeOrder.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/time/SpokenPhrase.h"

#include <cstddef>
#include <utility>

namespace quorvell {

namespace {

/// "My morning meeting tomorrow" is a meeting tomorrow morning.
std::string withPartBehindDay(std::string subject)
{
    static const Pattern form(
        "\\b(morning|afternoon|evening) ((?:[a-z]+ )?(?:meetings?|events?|appointments?|plans?|calls?|things?)) "
        "(?:(?:for|on|of) )?(today|tomorrow|(?:this |next )?(?:mon|tues|wednes|thurs|fri|satur|sun)"
        "day)\\b");
    const auto match = form.find(subject);
    if (!match)
        return subject;
    return subject.substr(0, match->range.start) + match->texts[1] + " " + match->texts[2] + " " + match->texts[0]
        + subject.substr(match->range.end);
}

/// "From three to five": hours, and not three minutes to five.
std::string withHoursInDigits(std::string subject)
{
    static const std::string hour("(one|two|three|four|five|six|seven|eight|nine|ten|eleven|twelve)");
    static const Pattern form("\\b(?:from|between) " + hour + " (?:to|till|until|and) " + hour + "\\b");
    const auto match = form.find(subject);
    if (!match)
        return subject;
    for (const std::size_t group : {1U, 0U}) // From behind, so that the places in front stay.
        if (const auto& range = match->groups[group])
            subject.replace(range->start, range->end - range->start,
                SpokenPhrase::withDigits("at " + match->texts[group]).substr(3));
    return subject;
}

/// "Tomorrow evening 7"
std::string withHourAfterPart(const std::string& subject)
{
    static const Pattern hour("(?<=\\b(?:morning|afternoon|evening|night) )(?=\\d{1,2}(?::\\d{2})?$)");
    return hour.replaceAll(subject, "at ");
}

} // namespace

std::string TimeOrder::of(std::string subject)
{
    return withHoursInDigits(withHourAfterPart(withPartBehindDay(std::move(subject))));
}

} // namespace quorvell
