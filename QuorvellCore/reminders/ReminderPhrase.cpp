// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/ReminderPhrase.h"

#include "QuorvellCore/reminders/PhraseDate.h"
#include "QuorvellCore/reminders/PhraseRecogniser.h"
#include "QuorvellCore/reminders/PhraseTask.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/LowerCase.h"

namespace quorvell {

namespace {

/// Days are counted from here to the year 9999; a clock outside is broken.
bool isUsable(Instant now)
{
    constexpr Instant first = std::chrono::sys_days(std::chrono::year(1) / 1 / 2);
    constexpr Instant end = std::chrono::sys_days(std::chrono::year(9999) / 1 / 1);
    return now >= first && now < end;
}

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
    if (text.size() > maximumBytes || !isUsable(now))
        return std::nullopt;
    const std::string input = repairUtf8(text);
    const LowerCasedText lower(input);
    const PhraseFindings findings = PhraseRecogniser(lower.text(), now, calendar).findings();
    if (findings.isEmpty())
        return std::nullopt;

    const std::vector<TextRange> ranges = rangesInInput(findings.ranges, lower);
    PhraseDate date = PhraseDate::resolve(findings, now, calendar);
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
