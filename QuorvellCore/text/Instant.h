// SPDX-License-Identifier: MIT
// Instants as every room passes them, and their one text form in files and tool results.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// Milliseconds since 1970-01-01 UTC, cut (never rounded) when made.
using Instant = std::chrono::sys_time<std::chrono::milliseconds>;

/// ISO 8601 in UTC with milliseconds and Z: "2026-11-22T17:00:00.000Z". Years 0000 to 9999.
std::string isoText(Instant instant);

/// Reads the form above; milliseconds may be missing (or have 1 to 9 digits, cut to 3) and an offset such as
/// "+01:00" may stand for Z. Nothing for any other text, for a date that does not exist, and for an instant that an
/// offset carries out of those years.
std::optional<Instant> parseIsoText(std::string_view text);

} // namespace quorvell
