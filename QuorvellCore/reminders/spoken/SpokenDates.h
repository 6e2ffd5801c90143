// SPDX-License-Identifier: MIT
// Days and lengths of time as people say them, rewritten as the patterns know them: "in an hour and a half" becomes
// "in 90 minutes", "december fifth" "december 5", "on the first of every month" "every month on the 1st", "on mondays"
// "every monday".
#pragma once

#include "QuorvellCore/reminders/wording/RequestWording.h"

#include <optional>
#include <string>

namespace quorvell {

/// Nothing where no word changes, which is most often; English only.
std::optional<std::string> withWrittenDates(const RequestWording& wording);

} // namespace quorvell
