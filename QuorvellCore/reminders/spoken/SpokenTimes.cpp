// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/spoken/SpokenTimes.h"

#include "QuorvellCore/reminders/calendar/DecimalNumber.h"
#include "QuorvellCore/reminders/spoken/SpokenTimeCues.h"
#include "QuorvellCore/reminders/spoken/SpokenTimeNames.h"
#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/Pattern.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>
#include <utility>

namespace quorvell {

namespace {

constexpr auto& hourNames = SpokenTimeNames::hours;
constexpr auto& minuteNames = SpokenTimeNames::minutes;
constexpr int hoursOnTheClock = 12;
constexpr int minutesInHour = 60;

struct SpokenTimePatterns {
    const std::string hour = "(one|two|three|four|five|six|seven|eight|nine|ten|eleven|twelve|1[0-2]|[1-9])";
    const std::string minute = "((?:oh?[ ])?five|ten|fifteen|(?:twenty|thirty|forty|fifty)(?:[- ]five)?)";

    /// "half past five", "at ten to six".
    const Pattern relative{R"(\b(at\s+|by\s+)?(half|a\s+quarter|quarter|\d{1,2}|)" + minute
            + R"()(?:\s+minutes?)?[- ]\s*(past|to|after|before|till|til)\s+)" + hour + R"((?:\b|(?=[ap]\.?m\b)))",
        Pattern::Case::insensitive};
    const Pattern oClock{R"((?<!\bthe\s)(?<!\bmy\s)(?<!\bour\s)\b(at\s+|by\s+)?)" + hour + R"(\s*o\s?['’]?\s?clock\b)",
        Pattern::Case::insensitive};
    /// "five thirty pm".
    const Pattern marked{
        R"(\b)" + hour + R"((?:\s+)" + minute + R"()?\s+([ap])\.?\s?m\b\.?)", Pattern::Case::insensitive};
    /// "at five thirty", but not "look at three houses", "one by one" or "at one point".
    const Pattern plain{R"((?<!\bone\s)\b(at\s+|by\s+))" + hour + R"((?:\s+)" + minute
            + R"()?\b(?!%|\s+(?:of|or|percent|more|other|point|time|stage|end|side|place|go|(?!this\b)\w*s)\b))",
        Pattern::Case::insensitive};

    static const SpokenTimePatterns& all()
    {
        static const SpokenTimePatterns patterns;
        return patterns;
    }
};

int hourOf(const std::string& word)
{
    const auto found = std::find(hourNames.begin(), hourNames.end(), lowerCased(word));
    return found != hourNames.end() ? static_cast<int>(found - hourNames.begin()) + 1 : decimalNumber(word).value_or(0);
}

int minuteOf(const std::string& word)
{
    std::string name = lowerCased(word);
    std::replace(name.begin(), name.end(), '-', ' ');
    if (name.starts_with("o"))
        return 5;
    if (name == "half")
        return 30;
    if (name.ends_with("quarter"))
        return 15;
    const auto found = std::find(minuteNames.begin(), minuteNames.end(), name);
    return found != minuteNames.end() ? static_cast<int>(found - minuteNames.begin()) * 5
                                      : decimalNumber(name).value_or(0);
}

std::string writtenClock(int hour, int minute)
{
    if (minute == 0)
        return std::to_string(hour);
    std::array<char, 32> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%d:%02d", hour, minute);
    return buffer.data();
}

std::string prefixOf(const PatternMatch& match)
{
    return match.texts[0].empty() ? "at " : match.texts[0];
}

/// The groups of each are those of its pattern. Nothing leaves the words as they stand.
std::optional<std::string> writtenRelative(const PatternMatch& match)
{
    const int minute = minuteOf(match.texts[1]);
    const bool isNamed = lowerCased(match.texts[1]) == "half" || lowerCased(match.texts[1]).ends_with("quarter");
    const std::string link = lowerCased(match.texts[3]);
    const bool isBefore = link != "past" && link != "after";
    const bool isLed = match.groups[0] && lowerCased(match.texts[0]).starts_with("at");
    const bool isUsual = link == "past" || link == "to"; // "Five after six" is people, too.
    const bool isTime = minute > 0 && minute < minutesInHour
        && (isNamed || (isUsual ? match.groups[0].has_value() : isLed))
        && !(isBefore && lowerCased(match.texts[1]) == "half");
    if (!isTime)
        return std::nullopt;
    const int hour = hourOf(match.texts[4]);
    const int hourBefore = hour == 1 ? hoursOnTheClock : hour - 1;
    return prefixOf(match) + (isBefore ? writtenClock(hourBefore, minutesInHour - minute) : writtenClock(hour, minute));
}

std::optional<std::string> writtenOClock(const PatternMatch& match)
{
    return prefixOf(match) + writtenClock(hourOf(match.texts[1]), 0);
}

std::optional<std::string> writtenMarked(const PatternMatch& match)
{
    return writtenClock(hourOf(match.texts[0]), minuteOf(match.texts[1])) + " " + lowerCased(match.texts[2]) + "m";
}

std::optional<std::string> writtenPlain(const PatternMatch& match)
{
    return match.texts[0] + writtenClock(hourOf(match.texts[1]), minuteOf(match.texts[2]));
}

using Rewriting = std::optional<std::string> (*)(const PatternMatch&);

std::string rewritten(const std::string& text, const Pattern& pattern, Rewriting rewrite)
{
    std::string result;
    std::size_t kept = 0;
    for (const PatternMatch& match : pattern.findAll(text)) {
        const auto replacement = rewrite(match);
        if (!replacement)
            continue;
        result.append(text, kept, match.range.start - kept).append(*replacement);
        kept = match.range.end;
    }
    return result.append(text, kept);
}

} // namespace

std::string withWrittenTimes(std::string_view text)
{
    const SpokenTimePatterns& patterns = SpokenTimePatterns::all();
    std::string result(text);
    SpokenTimeCues cues = SpokenTimeCues::of(result);
    const auto rewrite = [&](const Pattern& pattern, Rewriting rewriting) {
        std::string changed = rewritten(result, pattern, rewriting);
        if (changed == result)
            return;
        result = std::move(changed);
        cues = SpokenTimeCues::of(result);
    };
    if (cues.relative)
        rewrite(patterns.relative, writtenRelative);
    if (cues.oClock)
        rewrite(patterns.oClock, writtenOClock);
    if (cues.marked)
        rewrite(patterns.marked, writtenMarked);
    if (cues.plain)
        rewrite(patterns.plain, writtenPlain);
    return result;
}

} // namespace quorvell
