// SPDX-License-Identifier: MIT
#include "Understanding/skills/calendar/reading/DayChoice.h"

#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/time/SpokenPhrase.h"

#include <cstdlib>

namespace quorvell {

std::optional<DateParts> DayChoice::named(const std::string& core, const std::vector<TimeChoice>& choices)
{
    static const Pattern number("\\b(\\d{1,2})(?:st|nd|rd|th)?\\b");
    const std::string plain = lowerCased(SpokenPhrase::withDigits(core));
    const auto match = number.find(plain);
    const int day = match ? std::atoi(match->texts[0].c_str()) : 0;
    std::optional<DateParts> named;
    for (const TimeChoice& choice : choices) {
        const std::string when = lowerCased(choice.when);
        const std::string weekday = when.substr(0, when.find(' '));
        if (match ? choice.date.day != day : plain.find(weekday) == std::string::npos)
            continue;
        if (named)
            return std::nullopt;
        named = choice.date;
    }
    static const Pattern first("\\bfirst(?: one)?$|\\bformer$");
    static const Pattern second("\\b(?:second|last|other)(?: one)?$|\\blatter$");
    if (!named && first.find(plain))
        return choices.front().date;
    return !named && second.find(plain) ? std::optional(choices.back().date) : named;
}

} // namespace quorvell
