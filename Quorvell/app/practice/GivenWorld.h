// SPDX-License-Identifier: MIT
// The practice world of a file that somebody named.
#pragma once

#include "Quorvell/practice/description/PracticeDescription.h"

#include <iosfwd>
#include <optional>
#include <string>

namespace quorvell {

/// Nothing where something is wrong with it, which is then told, a line each.
std::optional<PracticeDescription> givenWorld(const std::string& file, std::ostream& problems);

} // namespace quorvell
