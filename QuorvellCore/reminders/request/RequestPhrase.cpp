// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/request/RequestPhrase.h"

#include "QuorvellCore/reminders/phrase/PhraseReading.h"
#include "QuorvellCore/reminders/phrase/PhraseTask.h"
#include "QuorvellCore/reminders/request/RepeatDays.h"
#include "QuorvellCore/reminders/request/SaidDates.h"
#include "QuorvellCore/reminders/request/WrittenRequest.h"
#include "QuorvellCore/reminders/wording/RequestWording.h"

#include <utility>

namespace quorvell {

std::optional<ReminderPhrase> requestPhrase(std::string_view words, Instant now, const Calendar& calendar)
{
    if (words.size() > ReminderPhrase::maximumBytes)
        return std::nullopt;
    const RequestWording written(writtenRequest(words, now, calendar));
    const auto repeatDays = RepeatDays::find(written);
    const RequestWording wording(repeatDays ? repeatDays->words : written.text());
    const SaidDates said = SaidDates::find(wording.tokens(), calendar.day(now));
    if (said.isContradiction)
        return std::nullopt;
    PhraseHints hints;
    if (said.day) {
        hints.day = said.day;
        hints.dayWords = said.words;
    }
    const auto reading = PhraseReading::of(wording.lower().text(), hints, now, calendar);
    if (!reading)
        return std::nullopt;
    std::vector<TextRange> ranges;
    for (const TextRange& range : reading->findings.ranges)
        ranges.push_back(wording.asWritten(range));
    ranges = mergedRanges(std::move(ranges));
    PhraseDate date = reading->date;
    ReminderPhrase phrase;
    phrase.task = phraseTask(wording.text(), ranges);
    phrase.date = date.date;
    phrase.hasTime = date.hasTime;
    phrase.alternatives = std::move(date.alternatives);
    phrase.repeatRule = std::move(date.repeatRule);
    if (repeatDays) {
        phrase.repeatRule = repeatDays->rule;
        phrase.date = repeatDays->firstAt(date.date, now, calendar);
        for (Instant& other : phrase.alternatives)
            other = repeatDays->firstAt(other, now, calendar);
    }
    phrase.timeWords = wordsAt(wording.text(), ranges);
    return phrase;
}

} // namespace quorvell
