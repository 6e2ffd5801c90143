// SPDX-License-Identifier: MIT
// Time zones by the names that another family of systems gives them in calendars.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// "Europe/Berlin" for "W. Europe Standard Time". Nothing for any other name.
std::optional<std::string> zoneOfWindowsName(std::string_view name);

} // namespace quorvell
