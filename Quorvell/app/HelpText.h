#pragma once

namespace CLI {
class App;
}

namespace quorvell {

/// How the program and, since they take it over, all commands declared later explain themselves and what was wrong with
/// a command line: lines broken between words, exit codes told, the nearest word for one that does not exist.
void useHelpText(CLI::App& program);

} // namespace quorvell
