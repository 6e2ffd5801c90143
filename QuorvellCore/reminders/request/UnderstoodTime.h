// SPDX-License-Identifier: MIT
// What is clear of a time of which something else has to be asked.
#pragma once

#include "QuorvellCore/reminders/calendar/Calendar.h"
#include "QuorvellCore/reminders/phrase/PhraseReading.h"
#include "QuorvellCore/reminders/request/PassedOverTime.h"

#include <string>
#include <vector>

namespace quorvell {

/// Each in words that are read as just that, so that they can be said again beside an answer; empty where nothing is
/// clear.
struct UnderstoodTime {
    std::string rule; ///< "every week"
    std::string day; ///< "2026-11-26"
    std::string clock; ///< "at 5:30 pm", "at 5" where nobody said which half of the day, "in the evening".

    static UnderstoodTime of(
        const PhraseReading& phrase, const std::vector<PassedOverTime>& passedOver, const Calendar& calendar);

    bool operator==(const UnderstoodTime&) const = default;
};

} // namespace quorvell
