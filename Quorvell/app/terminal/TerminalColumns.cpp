// SPDX-License-Identifier: MIT
#include "Quorvell/app/terminal/TerminalColumns.h"

#include "Quorvell/settings/ProgramEnvironment.h"
#include "QuorvellCore/text/ColumnText.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <limits>

namespace quorvell {

std::size_t terminalColumns()
{
    constexpr std::size_t usual = 80;
    winsize size{};
    return ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 1 ? size.ws_col : usual;
}

std::size_t outputColumns(const ProgramEnvironment& environment)
{
    return environment.isOutputTerminal ? terminalColumns() : std::numeric_limits<std::size_t>::max();
}

std::string forOutput(const std::string& text, const ProgramEnvironment& environment, std::size_t indent)
{
    return wrappedToColumns(text, outputColumns(environment), indent);
}

} // namespace quorvell
