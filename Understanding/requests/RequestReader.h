// SPDX-License-Identifier: MIT
// Reads a request that stands by itself, with no question before it.
#pragma once

#include "Understanding/dialogue/Request.h"

#include <optional>
#include <string_view>

namespace quorvell {

struct RequestReader {
    /// An utterance with its opening and closing words that is a request whatever was asked before.
    static std::optional<Request> readSaid(std::string_view words, const RuleSurroundings& around);
    /// The likeliest request that the words can be, its parts found; nothing when they ask for nothing that is known
    /// here. `core` is an utterance without its opening and closing words.
    static std::optional<Request> read(std::string_view core, const RuleSurroundings& around);
    /// The same of words that only want to know: what can be looked up comes first.
    static std::optional<Request> readQuestion(std::string_view core, const RuleSurroundings& around);
};

} // namespace quorvell
