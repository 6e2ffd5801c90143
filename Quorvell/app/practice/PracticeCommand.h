// SPDX-License-Identifier: MIT
// `quorvell practice`: tries the assistant in a small world that a file describes.
#pragma once

#include "Quorvell/app/program/Command.h"
#include "Quorvell/settings/ProgramEnvironment.h"

namespace quorvell {

Command practiceCommand(const ProgramEnvironment& environment);

} // namespace quorvell
