// SPDX-License-Identifier: MIT
// How text for a terminal is set off, where it may be: control sequences, all empty without colour.
#pragma once

#include <string_view>

namespace quorvell {

enum class TerminalColour { none, ansi };

/// Around what is not speech.
std::string_view beginFaint(TerminalColour colour);
/// Around what the user types, to tell it from the answers.
std::string_view beginTyped(TerminalColour colour);
/// Behind either.
std::string_view endColour(TerminalColour colour);

} // namespace quorvell
