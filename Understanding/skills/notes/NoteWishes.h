// SPDX-License-Identifier: MIT
// Wishes for notes that are whole utterances: what cannot be done to a note, a note that is to be forgotten, and what
// is told to be found again. Pure.
#pragma once

#include "Understanding/dialogue/Request.h"
#include "Understanding/dialogue/RuleSurroundings.h"

#include <optional>
#include <string>

namespace quorvell {

struct NoteWishes {
    static std::optional<Request> read(const std::string& core, const RuleSurroundings& around);
};

} // namespace quorvell
