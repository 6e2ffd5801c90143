// SPDX-License-Identifier: MIT
// Opens the notebook for one thing that a command does and returns what `use` returns; 1 when it cannot be opened,
// which is told.
#pragma once

#include "Quorvell/notebook/FullNotebook.h"

#include <functional>
#include <iosfwd>

namespace quorvell {

struct ProgramEnvironment;

int withNotebook(
    const ProgramEnvironment& environment, std::ostream& errors, const std::function<int(FullNotebook&)>& use);

} // namespace quorvell
