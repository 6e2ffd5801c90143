// SPDX-License-Identifier: MIT
// How wide the terminal of the standard output is at this moment; 80 where nobody can tell.
#pragma once

#include <cstddef>
#include <string>

namespace quorvell {

struct ProgramEnvironment;

std::size_t terminalColumns();

/// How wide lines may be: as the terminal is, without end in a pipe.
std::size_t outputColumns(const ProgramEnvironment& environment);

/// Broken between words for a terminal; as it is for a pipe.
std::string forOutput(const std::string& text, const ProgramEnvironment& environment, std::size_t indent = 0);

} // namespace quorvell
