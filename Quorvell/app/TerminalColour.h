#pragma once

#include <string>

namespace quorvell {

/// What may be sent to change how text looks.
enum class TerminalColour { none, ansi };

/// For what is not speech.
std::string faint(const std::string& text, TerminalColour colour);

} // namespace quorvell
