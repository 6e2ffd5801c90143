// SPDX-License-Identifier: MIT
// Words of a request that give way to others, so that the readers behind find what they know.
#pragma once

#include "QuorvellCore/reminders/wording/RequestWording.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// The tokens from `first` up to `end` give way to `text`.
struct TokenReplacement {
    int first = 0;
    int end = 0;
    std::string text;

    /// The text with all of them done, which are in order and do not overlap. Nothing where there are none.
    static std::optional<std::string> apply(
        const RequestWording& wording, const std::vector<TokenReplacement>& replacements);
};

} // namespace quorvell
