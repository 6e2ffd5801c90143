// SPDX-License-Identifier: MIT
// Several weekdays of one rule: "every tuesday and thursday", "on mondays, wednesdays and fridays".
#pragma once

#include "QuorvellCore/reminders/calendar/Calendar.h"
#include "QuorvellCore/reminders/state/ReminderRepeat.h"
#include "QuorvellCore/reminders/wording/RequestWording.h"
#include "QuorvellCore/text/Instant.h"

#include <optional>
#include <string>

namespace quorvell {

struct RepeatDays {
    ReminderRepeat rule{}; ///< Weekly, on two days at least.
    std::string words{}; ///< The request with the first of them alone: "every tuesday".

    /// Nothing where the words name none or a single one.
    static std::optional<RepeatDays> find(const RequestWording& wording);
    /// The first of these days at the time of day of `date` that is still to come.
    Instant firstAt(Instant date, Instant now, const Calendar& calendar) const;
    /// "every tuesday and thursday", to be read again.
    std::string spoken() const;
};

} // namespace quorvell
