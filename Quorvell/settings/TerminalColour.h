// SPDX-License-Identifier: MIT
// How text for a terminal is set off, where it may be.
#pragma once

#include <string>
#include <string_view>

namespace quorvell {

enum class TerminalColour { none, ansi };

/// For what is not speech.
std::string faint(const std::string& text, TerminalColour colour);
/// Around what the user types, to tell it from the answers. Both are empty without colour.
std::string_view beginTyped(TerminalColour colour);
std::string_view endTyped(TerminalColour colour);

} // namespace quorvell
