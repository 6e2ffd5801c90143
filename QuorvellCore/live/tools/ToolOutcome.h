// SPDX-License-Identifier: MIT
// How one result of a tool is told to the user.
#pragma once

#include "QuorvellCore/live/tools/ToolStatus.h"

#include <string_view>

namespace quorvell {

/// Behind the words stands what the result is about, or a number: "Reminder set: Call mum", "Note read: 3 notes".
struct ToolOutcome {
    ToolStatus status = ToolStatus::none;
    std::string_view words; ///< Empty: not told, because it is told elsewhere.
    std::string_view counted = {}; ///< What is counted, in the singular.
    std::string_view list = {}; ///< The member whose length is the number, where there is no "count".
};

} // namespace quorvell
