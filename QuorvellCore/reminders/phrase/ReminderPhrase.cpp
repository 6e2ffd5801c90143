// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/phrase/ReminderPhrase.h"

#include "QuorvellCore/reminders/phrase/PhraseReading.h"
#include "QuorvellCore/reminders/phrase/PhraseTask.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"

namespace quorvell {

namespace {

std::vector<TextRange> rangesInInput(const std::vector<TextRange>& ranges, const LowerCasedText& lower)
{
    std::vector<TextRange> mapped;
    mapped.reserve(ranges.size());
    for (const TextRange& range : ranges)
        mapped.push_back({lower.inputPosition(range.start), lower.inputEndPosition(range.end)});
    return mergedRanges(std::move(mapped));
}

} // namespace

std::optional<ReminderPhrase> ReminderPhrase::parse(std::string_view text, Instant now, const Calendar& calendar)
{
    if (text.size() > maximumBytes)
        return std::nullopt;
    const std::string input = repairUtf8(text);
    const LowerCasedText lower(input);
    const auto reading = PhraseReading::of(lower.text(), {}, now, calendar);
    if (!reading)
        return std::nullopt;

    const std::vector<TextRange> ranges = rangesInInput(reading->findings.ranges, lower);
    PhraseDate date = reading->date;
    ReminderPhrase phrase;
    phrase.task = phraseTask(input, ranges);
    phrase.date = date.date;
    phrase.hasTime = date.hasTime;
    phrase.alternatives = std::move(date.alternatives);
    phrase.repeatRule = std::move(date.repeatRule);
    phrase.timeWords = wordsAt(input, ranges);
    return phrase;
}

} // namespace quorvell
