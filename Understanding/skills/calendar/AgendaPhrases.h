// SPDX-License-Identifier: MIT
// Requests that name the calendar, or what is in it, in so many words: they need no weighing.
#pragma once

#include "Understanding/dialogue/Request.h"

#include <optional>
#include <string>

namespace quorvell {

struct AgendaPhrases {
    /// Nothing for anything else. `core` is an utterance without its opening and closing words.
    static std::optional<Request> read(const std::string& core, const RuleSurroundings& around);
};

} // namespace quorvell
