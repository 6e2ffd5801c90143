// SPDX-License-Identifier: MIT
#include "Understanding/time/TimeWords.h"

#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/Pattern.h"
#include "Understanding/time/SpokenLength.h"
#include "Understanding/time/SpokenPhrase.h"
#include "Understanding/time/TimeVocabulary.h"
#include "Understanding/words/ListPlace.h"
#include "Understanding/words/RequestWords.h"

#include <algorithm>
#include <cstdlib>

namespace quorvell {

namespace {

/// The clock alone: "3", "half past four".
std::string withAt(const std::string& words)
{
    static const Pattern bare("^\\d{1,2}(?::\\d{2})?$|^(?:half|quarter) (?:past|to)\\b", Pattern::caseless);
    static const Pattern more("\\b(?:more|another|extra|other)\\s+", Pattern::caseless);
    static const Pattern unit("^(hour|day|week|minute)$", Pattern::caseless);
    const std::string plain = more.replaceAll(words, "");
    if (const auto match = unit.find(plain))
        return (match->texts[0] == "hour" ? "an " : "a ") + match->texts[0];
    const std::string digits = SpokenPhrase::withDigits(plain);
    return bare.find(digits) ? "at " + digits : digits;
}

bool isLink(std::string_view word)
{
    return word == "to" || word == "until" || word == "till" || word == "by" || word == "for" || word == "back"
        || word == "off" || word == "out" || word == "be" || word == "is" || word == "are" || word == "rather"
        || word == "say" || word == "go" || word == "later" || word == "moved" || word == "moving" || word == "been"
        || word == "has" || word == "now";
}

bool isTail(std::string_view word)
{
    return word == "later" || word == "now" || word == "again" || word == "back" || word == "on";
}

} // namespace

std::optional<int> TimeWords::daysIn(std::string_view words)
{
    static const Pattern days("^(?:an?|one|(\\d{1,2})) (?:day|(week))s?$", Pattern::caseless);
    constexpr int daysOfWeek = 7;
    const auto match = days.find(SpokenPhrase::withDigits(words));
    if (!match)
        return std::nullopt;
    const int count = match->texts[0].empty() ? 1 : std::atoi(match->texts[0].c_str());
    return match->texts[1].empty() ? count : daysOfWeek * count;
}

bool TimeWords::isTime(std::string_view words, const LocalTime& around)
{
    const std::string text = withAt(trimmed(words));
    if (const auto length = SpokenLength::read(text); length && length->rest.empty())
        return true;
    if (daysIn(text))
        return true;
    const auto phrase = SpokenPhrase::read(text, around);
    return phrase && phrase->task.empty() && !phrase->repeatRule;
}

std::optional<TimeWords> TimeWords::atEnd(std::string_view said, const LocalTime& around)
{
    const RequestWords words(said);
    std::size_t end = words.size();
    bool isLater = false; // Than it was, and not than now.
    for (; end > 0 && isTail(words.at(end - 1)); --end)
        isLater = isLater || words.at(end - 1) == "later";
    for (std::size_t start = end > TimeVocabulary::longest ? end - TimeVocabulary::longest : 0; start < end; ++start) {
        // "The second one to 5 pm" is not 4:59.
        const bool isPlace = start > 0 && ListPlace::read(words.said(start - 1, start + 1));
        const bool mayBegin = !isPlace && !isLink(words.at(start)) && TimeVocabulary::mayBeTime(words, start, end);
        if (!mayBegin || !isTime(words.said(start, end), around))
            continue;
        TimeWords found{.time = withAt(words.said(start, end)), .rest = {}, .isBy = isLater};
        std::size_t last = start;
        while (last > 0 && isLink(words.at(last - 1))) {
            --last;
            found.isBy = found.isBy || words.at(last) == "by";
        }
        found.rest = words.said(0, last);
        return found;
    }
    return std::nullopt;
}

std::optional<TimeWords> TimeWords::atStart(std::string_view said, const LocalTime& around)
{
    const RequestWords words(said);
    for (std::size_t end = std::min(words.size(), TimeVocabulary::longest); end > 0; --end) {
        if (!TimeVocabulary::mayBeTime(words, 0, end))
            continue;
        const std::string start = words.said(0, end);
        const auto phrase = SpokenPhrase::read(withAt(start), around);
        const bool isRepeated = phrase && phrase->repeatRule && phrase->task.empty();
        if (isRepeated || isTime(start, around))
            return TimeWords{.time = start, .rest = words.said(end, words.size())};
    }
    return std::nullopt;
}

} // namespace quorvell
