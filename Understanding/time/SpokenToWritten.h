// SPDX-License-Identifier: MIT
// Times as people say them, written as readers of times expect them: "half past six" becomes "6:30", "at five p m" "at
// 5 pm", "in twenty five minutes" "in 25 minutes", "the fifth of march" "march 5th", "an hour and a half from now" "in
// 90 minutes".
#pragma once

#include <string>
#include <string_view>

namespace quorvell {

/// Numbers outside times stay words ("call five guys"), and so does everything that is written already: typed text may
/// pass through. English only.
std::string spokenToWritten(std::string_view text);

} // namespace quorvell
