// SPDX-License-Identifier: MIT
#include "Understanding/skills/clock/ClockTime.h"

#include "QuorvellCore/text/Pattern.h"

#include <cstdlib>
#include <string>

namespace quorvell {

std::vector<std::chrono::minutes> ClockTime::read(std::string_view words)
{
    using std::chrono::hours;
    using std::chrono::minutes;
    static const Pattern clock(
        "^(\\d{1,2})(?:[:.](\\d{2}))?(?: ?o['’]?clock)?(?: ?([ap])\\.?m?\\.?)?$", Pattern::caseless);
    static const Pattern noon("^(?:noon|midday)$", Pattern::caseless);
    static const Pattern midnight("^midnight$", Pattern::caseless);
    constexpr int half = 12;
    constexpr int day = 24;
    constexpr int hour = 60;
    if (noon.find(words))
        return {hours(half)};
    if (midnight.find(words))
        return {hours(0)};
    static const Pattern late("^(.+?) (?:tonight|in the (?:afternoon|evening))$", Pattern::caseless);
    static const Pattern early("^(.+?) in the morning$", Pattern::caseless);
    if (const auto said = late.find(words))
        return read(said->texts[0] + " pm");
    if (const auto said = early.find(words))
        return read(said->texts[0] + " am");
    const auto match = clock.find(words);
    if (!match)
        return {};
    const int said = std::atoi(match->texts[0].c_str());
    const int minute = std::atoi(match->texts[1].c_str());
    const std::string& letter = match->texts[2];
    if (minute >= hour || said >= day || (!letter.empty() && (said == 0 || said > half)))
        return {};
    const bool isClear = said == 0 || said > half || match->texts[0].starts_with('0');
    if (!letter.empty())
        return {hours(said % half + (letter == "p" || letter == "P" ? half : 0)) + minutes(minute)};
    if (isClear)
        return {hours(said) + minutes(minute)};
    return {hours(said % half) + minutes(minute), hours(said % half + half) + minutes(minute)};
}

} // namespace quorvell
