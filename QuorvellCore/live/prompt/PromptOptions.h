// SPDX-License-Identifier: MIT
// What the instructions depend on.
#pragma once

#include "QuorvellCore/live/prompt/HelpMode.h"
#include "QuorvellCore/live/tools/ToolFlags.h"

#include <string>

namespace quorvell {

/// They say nothing about the time but what `whereAndWhen` brings along.
struct PromptOptions {
    /// Who holds the tools: the model that talks, or a backend that it delegates to.
    enum class ToolHolder { voice, backend };

    std::string userName; ///< Empty: "your friend".
    std::string familyName; ///< The person the user trusts with computer matters. Empty: nobody is named.
    HelpMode startMode = HelpMode::guide;
    ToolHolder toolHolder = ToolHolder::backend;
    ToolFlags tools;
    std::string whereAndWhen; ///< Date, time, zone and place in words. Empty: the section is left out.

    bool operator==(const PromptOptions&) const = default;
};

} // namespace quorvell
