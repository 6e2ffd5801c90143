// SPDX-License-Identifier: MIT
// Slips of the finger in the words of a time, put right: "wensday" becomes "wednesday", "in 5 mintues" "in 5 minutes".
#pragma once

#include "QuorvellCore/reminders/wording/RequestWording.h"

#include <optional>
#include <string>

namespace quorvell {

/// Only where a time can stand and nothing else is meant. What is left alone beside another day is asked about.
/// Nothing where no word changes.
std::optional<std::string> withoutTimeSlips(const RequestWording& wording);

} // namespace quorvell
