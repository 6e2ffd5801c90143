// SPDX-License-Identifier: MIT
// What the user answered to a question of a tool.
#pragma once

#include "QuorvellCore/text/Instant.h"

#include <optional>
#include <string>

namespace quorvell {

/// Only their own words count, never what the model says they said. Main thread.
class ConsentWords {
public:
    virtual ~ConsentWords() = default;

    /// The user's latest words, spoken or typed, that came after `asked` by the wall clock. Nothing while there are
    /// none.
    virtual std::optional<std::string> heardSince(Instant asked) const = 0;
};

} // namespace quorvell
