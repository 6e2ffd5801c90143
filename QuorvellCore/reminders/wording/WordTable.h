// SPDX-License-Identifier: MIT
// The words that the readers of a request know, with what they can be.
#pragma once

#include "QuorvellCore/reminders/wording/WordTerms.h"

#include <optional>
#include <string_view>

namespace quorvell {

struct WordTable {
    /// `word` is in lower case and not empty.
    static std::optional<WordTerms> find(std::string_view word);
};

} // namespace quorvell
