// SPDX-License-Identifier: MIT
// Dates in figures, written as the readers of days know them: "4/13" becomes "on 2027-04-13", "18.12." "on 2026-12-18".
// Which number is the month is settled by what can be one, by a weekday that stands beside it, or by the custom of the
// user's region. Figures that are no date ("1/2 cup", "24/7") stay.
#pragma once

#include "QuorvellCore/reminders/calendar/Calendar.h"
#include "QuorvellCore/reminders/wording/RequestWording.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvell {

struct FigureDates {
    /// All whose order is settled. Nothing where no word changes.
    static std::optional<std::string> written(const RequestWording& wording, Instant now, const Calendar& calendar);
    /// The words with those whose order nobody can tell read with the day first, and with the month first. Empty
    /// without any.
    static std::vector<std::string> either(const RequestWording& wording, Instant now, const Calendar& calendar);
};

} // namespace quorvell
