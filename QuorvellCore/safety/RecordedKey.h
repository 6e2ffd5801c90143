// SPDX-License-Identifier: MIT
// A key or a chord under the one name by which it is judged and recorded.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quorvell {

/// "Return", "ctrl+l", "Page_Down", "Ctrl+Shift+T" as models write them become "return", "command+l", "page down",
/// "command+shift+t": lower case, modifiers in front in the order command, option, shift, and "command" for what this
/// desktop does with Ctrl. Nothing for what names no key, or more than one.
std::optional<std::string> recordedKey(std::string_view text);

} // namespace quorvell
