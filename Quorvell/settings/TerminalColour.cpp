// SPDX-License-Identifier: MIT
#include "Quorvell/settings/TerminalColour.h"

namespace quorvell {

std::string faint(const std::string& text, TerminalColour colour)
{
    return colour == TerminalColour::ansi ? "\x1b[2m" + text + "\x1b[0m" : text;
}

std::string_view beginTyped(TerminalColour colour)
{
    return colour == TerminalColour::ansi ? "\x1b[1m" : "";
}

std::string_view endTyped(TerminalColour colour)
{
    return colour == TerminalColour::ansi ? "\x1b[0m" : "";
}

} // namespace quorvell
