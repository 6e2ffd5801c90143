// SPDX-License-Identifier: MIT
// Times of day as people say them, rewritten as people write them: "at five thirty" becomes "at 5:30", "half past two"
// "at 2:30", "6 o'clock" "at 6".
#pragma once

#include <string>
#include <string_view>

namespace quorvell {

/// Phrases know only the written ones. Everything else stays as it is; English only.
std::string withWrittenTimes(std::string_view text);

} // namespace quorvell
