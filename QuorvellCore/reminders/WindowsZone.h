// SPDX-License-Identifier: MIT
// "Europe/Berlin" for "W.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// Europe Standard Time", as calendars from that other system call it. Nothing for any other name.
std::optional<std::string> zoneOfWindowsName(std::string_view name);

} // namespace quorvell
