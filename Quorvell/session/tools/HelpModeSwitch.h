// SPDX-License-Identifier: MIT
// The model's wish to switch the help mode, judged by what the user lately said: only the user switches it.
#pragma once

#include "QuorvellCore/live/history/RecentRequests.h"
#include "QuorvellCore/live/prompt/HelpMode.h"
#include "QuorvellCore/live/tools/ToolResult.h"

#include <optional>
#include <string_view>

namespace quorvell {

struct HelpModeSwitch {
    std::optional<HelpMode> mode; ///< The mode from now on; absent when refused.
    ToolResult answer; ///< For the model.

    /// The words that ask for `wanted` are used up by it.
    static HelpModeSwitch judge(std::optional<std::string_view> wanted, HelpMode current, RecentRequests& requests);
};

} // namespace quorvell
