// SPDX-License-Identifier: MIT
// Repetitions as people say them, rewritten as the patterns know them: "on workdays" becomes "every weekday", "once a
// week" "every week", "nightly" "every night", "every june 3" "every year on june 3", "at the start of each month"
// "every month on the 1st".
#pragma once

#include "QuorvellCore/reminders/wording/RequestWording.h"

#include <optional>
#include <string>

namespace quorvell {

/// Nothing where no word changes. What no rule can say ("every other week", "twice a day") stays and is asked about.
std::optional<std::string> withWrittenRules(const RequestWording& wording);

} // namespace quorvell
