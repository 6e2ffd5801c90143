// SPDX-License-Identifier: MIT
// Acts that are taken back one after the other, each by a call of its own.
#pragma once

#include "Understanding/dialogue/memory/DoneAct.h"

#include <optional>
#include <string>
#include <vector>

namespace quorvell {

struct TakingBack {
    std::vector<DoneAct> left{}; ///< The first is the one whose call is asked for or under way.
    std::vector<std::string> undone{}; ///< What was taken back.
    std::vector<std::string> failed{}; ///< Sentences.
    /// What is done instead, once all is taken back: a call, or words that are answered.
    std::optional<ToolRequest> call{};
    std::string words{};

    bool operator==(const TakingBack&) const = default;
};

} // namespace quorvell
