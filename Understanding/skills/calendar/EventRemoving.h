// SPDX-License-Identifier: MIT
// Wishes to delete events, and news that mean the same.
#pragma once

#include "Understanding/dialogue/Request.h"

#include <optional>
#include <string>

namespace quorvell {

struct EventRemoving {
    /// "Delete all my events for tomorrow", "take the lunch off my calendar", "skip yoga on saturday".
    static std::optional<Request> read(const std::string& core, const RuleSurroundings& around);
    /// "I'm not having dinner with John any more": whether it should go is asked.
    static std::optional<Request> readNews(const std::string& core, const RuleSurroundings& around);
};

} // namespace quorvell
