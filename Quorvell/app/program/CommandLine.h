// SPDX-License-Identifier: MIT
// Reads a command line as the program's commands declared it, explains them (--help, --version, what was wrong, the
// nearest word for one that does not exist) and runs the command that was chosen. The only room for the library that
// reads command lines: it is large, and each file that includes it takes seconds to compile.
#pragma once

#include "Quorvell/app/program/Command.h"

#include <string>
#include <vector>

namespace quorvell {

struct CommandLine {
    /// Gives the exit code. `words` come without the program's own name.
    static int run(const Command& program, const std::string& version, std::vector<std::string> words);
};

} // namespace quorvell
