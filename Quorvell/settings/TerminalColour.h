// SPDX-License-Identifier: MIT
// What may be sent to change how text looks.
#pragma once

#include <string>

namespace quorvell {

enum class TerminalColour { none, ansi };

/// For what is not speech.
std::string faint(const std::string& text, TerminalColour colour);

} // namespace quorvell
