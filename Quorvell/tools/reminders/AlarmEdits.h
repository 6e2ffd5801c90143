// SPDX-License-Identifier: MIT
// What each change makes of the note of an alarm or a timer. Pure.
#pragma once

#include "QuorvellCore/notebook/Note.h"
#include "QuorvellCore/reminders/calendar/Calendar.h"

#include <chrono>

namespace quorvell {

struct AlarmEdits {
    static void pause(Note& timer, Instant now);
    static void resume(Note& timer, Instant now);
    /// With another length, from now on.
    static void startAgain(Note& timer, std::chrono::seconds length, Instant now);
    /// `left` is what one that is paused has then; one that runs ends at `end`.
    static void lengthen(Note& timer, std::chrono::seconds left, Instant end);

    static void end(Note& alarm, Instant now, const Calendar& calendar);
    /// Of one that repeats the next time only.
    static void endOnce(Note& alarm, Instant now, const Calendar& calendar);
    /// What repeats does not ring up to the end of that day, and goes on behind it; what rings once is ended.
    static void rest(Note& alarm, LocalDay until, Instant now, const Calendar& calendar);
    /// Whether there is anything that `rest` would leave out.
    static bool ringsBy(const Note& alarm, LocalDay until, const Calendar& calendar);
};

} // namespace quorvell
