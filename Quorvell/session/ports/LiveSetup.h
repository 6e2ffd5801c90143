// SPDX-License-Identifier: MIT
// What the session wants from a live conversation, whichever service holds it.
#pragma once

#include "QuorvellCore/live/wire/vocabulary/LiveHistoryEntry.h"
#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <string>
#include <vector>

namespace quorvell {

struct LiveSetup {
    std::string voiceInstructions;
    std::string toolInstructions; ///< For the part of the model that uses tools.
    std::string soleInstructions{}; ///< Both in one, for a model that talks and uses the tools itself.
    Json tools = Json::array(); ///< Declarations of the tools that have an owner here.
    std::vector<LiveHistoryEntry> history; ///< Earlier turns, oldest first; empty with a resumption handle.
    /// Of an earlier connection of the same conversation: the service remembers what was said.
    std::optional<std::string> resumptionHandle{};

    bool operator==(const LiveSetup&) const = default;
};

} // namespace quorvell
