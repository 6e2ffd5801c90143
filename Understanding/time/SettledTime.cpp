// SPDX-License-Identifier: MIT
#include "Understanding/time/SettledTime.h"

#include "QuorvellCore/text/Pattern.h"
#include "Understanding/time/SpokenMoment.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/time/TimeVocabulary.h"

namespace quorvell {

std::string SettledTime::completing(const std::string& answer, const LocalTime& around) const
{
    static const Pattern dayWords(
        "\\b(?:today|tonight|tomorrow|tmrw|yesterday|next|week|in \\d+|in an?|days?|\\d+(?:st|nd|rd|th)"
        "|january|february|march|april|may|june|july|august|september|october|november|december|"
            + std::string(TimeVocabulary::weekday) + ")\\b|\\d{4}-\\d",
        Pattern::caseless);
    const auto phrase = SpokenPhrase::read(answer, around);
    if (!phrase)
        return answer;
    std::string whole = answer;
    const bool isPart = !clock.starts_with("at ") || clock == "at night";
    if (!clock.empty() && (isPart ? !phrase->hasTime || phrase->isAmbiguous() : !phrase->hasTime))
        whole += " " + clock;
    const auto moment = SpokenMoment::read(answer, around);
    const bool namesDay = (moment && moment->namesDay) || dayWords.find(answer);
    if (!day.empty() && phrase->hasTime && !namesDay)
        whole += " on " + day;
    if (!rule.empty() && !phrase->repeatRule)
        whole += " " + rule;
    return whole;
}

} // namespace quorvell
