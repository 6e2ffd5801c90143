// SPDX-License-Identifier: MIT
// Times of day that are written or said in ways the patterns do not know: "1730", "19h30", "7:30p", "half seven",
// "first thing", "end of day", rewritten as "17:30", "7:30 pm", "at 7:30", "in the morning".
#pragma once

#include "QuorvellCore/reminders/wording/RequestWording.h"

#include <optional>
#include <string>

namespace quorvell {

/// "Half seven" is half past seven, as in Britain; the end of a day is 5 PM. Both are said back. Nothing where no word
/// changes.
std::optional<std::string> withWrittenClocks(const RequestWording& wording);

} // namespace quorvell
