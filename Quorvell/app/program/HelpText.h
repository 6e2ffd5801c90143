// SPDX-License-Identifier: MIT
// How the program and, since they take it over, all commands declared later explain themselves and what was wrong with
// a command line: lines broken between words, exit codes told, the nearest word for one that does not exist.
#pragma once

namespace CLI {
class App;
}

namespace quorvell {

void useHelpText(CLI::App& program);

} // namespace quorvell
