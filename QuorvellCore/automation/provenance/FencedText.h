// SPDX-License-Identifier: MIT
// Text that others wrote, on its way to a model: between two lines that it cannot forge.
#pragma once

#include "QuorvellCore/automation/proposals/WordOrigin.h"

#include <string>
#include <string_view>

namespace quorvell {

/// What the model is told of an origin: "the screen", "the web", "a connected account".
std::string_view spokenOrigin(WordOrigin origin);

/// `mark` is chosen at random for each text, of letters, digits and hyphens, 16 at least: nobody who wrote the text
/// could know it. It does not occur inside, in either case of letters; control characters and marks of direction are
/// left out.
std::string fenced(std::string_view text, WordOrigin origin, std::string_view mark);

/// What the instructions say about such text, once.
std::string_view fenceInstruction();

} // namespace quorvell
