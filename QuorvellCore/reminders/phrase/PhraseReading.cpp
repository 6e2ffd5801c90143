// SPDX-License-Identifier: MIT
#include "QuorvellCore/reminders/phrase/PhraseReading.h"

#include "QuorvellCore/reminders/phrase/PhraseRecogniser.h"

#include <algorithm>
#include <string>

namespace quorvell {

namespace {

/// Days are counted from here to the year 9999; a clock outside is broken.
bool isUsable(Instant now)
{
    constexpr Instant first = std::chrono::sys_days(std::chrono::year(1) / 1 / 2);
    constexpr Instant end = std::chrono::sys_days(std::chrono::year(9999) / 1 / 1);
    return now >= first && now < end;
}

void overwrite(std::string& text, const std::vector<TextRange>& ranges, char letter)
{
    for (const TextRange& range : ranges)
        std::fill(text.begin() + static_cast<std::ptrdiff_t>(range.start),
            text.begin() + static_cast<std::ptrdiff_t>(range.end), letter);
}

} // namespace

std::optional<PhraseReading> PhraseReading::of(
    std::string_view lowerCased, const PhraseHints& hints, Instant now, const Calendar& calendar)
{
    if (!isUsable(now))
        return std::nullopt;
    std::string text(lowerCased);
    overwrite(text, hints.notTimes, 'x'); // A letter that begins no word of any pattern, and of the same length.
    overwrite(text, hints.dayWords, ' ');
    PhraseReading reading;
    reading.findings = PhraseRecogniser(text, now, calendar).findings(hints);
    if (reading.findings.isEmpty())
        return std::nullopt;
    reading.date = PhraseDate::resolve(reading.findings, now, calendar);
    return reading;
}

} // namespace quorvell
