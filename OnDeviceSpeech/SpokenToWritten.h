#pragma once

#include <string>
#include <string_view>

namespace quorvell {

/// Numbers of time expressions in digits, as readers of dates expect them: "twenty five minutes" becomes "25 minutes",
/// "the fifteenth" "the 15th", "december twelfth" "december 12th", "p.m." "pm". Everything else, text that already has
/// digits included, stays as it is. English only; works on lower-case words as a recogniser gives them.
std::string spokenToWritten(std::string_view text);

} // namespace quorvell
