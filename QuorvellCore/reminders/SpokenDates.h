// SPDX-License-Identifier: MIT
// Days and lengths of time as people say them, rewritten as the patterns know them: "in an hour and a half" becomes
// "in 90 minutes", "december fifth" "december 5", "on the first of every month" "every month on the 1st", "on mondays"
// "every monday".
#pragma once

#include <string>
#include <string_view>

namespace quorvell {

/// Everything else stays as it is; English only.
std::string withWrittenDates(std::string_view text);

} // namespace quorvell
