// SPDX-License-Identifier: MIT
// What the computer's time zone database holds for a zone, "Europe/Berlin".
#pragma once

#include <string>
#include <string_view>

namespace quorvell {

/// Empty where it has no such zone.
std::string systemZoneFile(std::string_view zone);

} // namespace quorvell
