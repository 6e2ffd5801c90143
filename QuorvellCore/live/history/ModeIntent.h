// SPDX-License-Identifier: MIT
// Which help mode the user's own words ask for.
#pragma once

#include "QuorvellCore/live/prompt/HelpMode.h"

#include <optional>
#include <string_view>

namespace quorvell {

/// Questions about modes, conditions, reports of what others said, and what the user does not want are no request.
/// English; any thread. Never feed it what a model or a screen said.
struct ModeIntent {
    /// The last request in the words counts: "don't do it for me, just show me" asks for guide.
    static std::optional<HelpMode> requested(std::string_view words);
};

} // namespace quorvell
