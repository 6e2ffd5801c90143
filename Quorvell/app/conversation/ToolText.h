// SPDX-License-Identifier: MIT
// What a tool does or did, in a few words for the user: "Reminder set: Call mum, Sunday 22 November at 5 PM".
#pragma once

#include "QuorvellCore/live/wire/vocabulary/LiveFunctionResponse.h"

#include <optional>
#include <string>

namespace quorvell {

struct ToolText {
    /// Nothing where the assistant's own words tell all of it, as when a tool only asks back.
    static std::optional<std::string> of(const LiveFunctionResponse& response);
    /// While it runs: "searching the notebook".
    static std::string running(const std::string& toolName);
};

} // namespace quorvell
