// SPDX-License-Identifier: MIT
// What was found in a reminder phrase, before a date is made of it.
#pragma once

#include "QuorvellCore/reminders/calendar/Calendar.h"
#include "QuorvellCore/reminders/phrase/PhraseWords.h"
#include "QuorvellCore/reminders/state/ReminderRepeat.h"
#include "QuorvellCore/text/Pattern.h"

#include <optional>
#include <vector>

namespace quorvell {

/// The word that made a reminder repeat.
/// Some rules take their day from the date that is found in the end.
enum class PhraseRepeat { daily, weekdays, weeklyOnDate, weeklyOnWeekday, monthlyOnDate, yearly };

/// A day that the words named.
struct PhraseDay {
    enum class Source {
        words, ///< "tomorrow", "on friday", "march 5".
        tonight,
        offset, ///< "in 2 days".
    };

    LocalDay day{};
    Source source = Source::words;
    /// How far the day moves on for a time that is already past: a week after "this friday" said on a Friday.
    std::chrono::days stepWhenPast{0};
};

/// A time of day as the words gave it.
struct PhraseClock {
    enum class Form {
        bare, ///< "at 5": the part of the day says which half, or nobody does.
        am,
        pm,
        noon,
        midnight,
    };

    Form form = Form::bare;
    int hour = 0; ///< 0 to 23, before `form` is applied.
    int minute = 0;
};

/// What the recognisers found, each filled by the first that had something to say.
struct PhraseFindings {
    std::optional<PhraseRepeat> repeat;
    int repeatWeekday = 0; ///< Of weeklyOnWeekday.
    std::optional<Instant> instant; ///< Hours or minutes from now: nothing else can change it.
    std::optional<PhraseDay> day;
    std::optional<std::chrono::days> offsetDays; ///< "in 2 days": keeps the time of day unless another is named.
    std::optional<DayPart> part;
    bool isNightOfDay = false; ///< The part is a day's night ("tonight", "tomorrow night"), so 12 is its midnight.
    std::optional<PhraseClock> clock;
    std::vector<TextRange> ranges; ///< In the lower-cased text, of the recognisers that contributed; in any order.

    bool isEmpty() const { return ranges.empty(); }
};

} // namespace quorvell
