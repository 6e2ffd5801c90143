// SPDX-License-Identifier: MIT
#include "Quorvell/settings/TerminalColour.h"

namespace quorvell {

std::string_view beginFaint(TerminalColour colour)
{
    return colour == TerminalColour::ansi ? "\x1b[2m" : "";
}

std::string_view beginTyped(TerminalColour colour)
{
    return colour == TerminalColour::ansi ? "\x1b[1m" : "";
}

std::string_view endColour(TerminalColour colour)
{
    return colour == TerminalColour::ansi ? "\x1b[0m" : "";
}

} // namespace quorvell
