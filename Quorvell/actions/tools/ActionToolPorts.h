// SPDX-License-Identifier: MIT
// What the tools that see the screen and act on it need.
#pragma once

#include "Quorvell/actions/pipeline/ActionPipeline.h"
#include "Quorvell/actions/tools/HelperMail.h"
#include "Quorvell/surface/Screen.h"
#include "QuorvellCore/automation/proposals/WordOrigin.h"
#include "QuorvellCore/text/Bytes.h"

#include <functional>
#include <string>
#include <string_view>

namespace quorvell {

struct ActionToolPorts {
    ActionPipeline& pipeline;
    Screen& screen; ///< To read and to search; what acts goes through the pipeline.
    Scheduler& scheduler;
    /// Marks a text as somebody else's before the model gets it, and keeps in mind that it got it. Never null.
    std::function<std::string(std::string text, WordOrigin origin)> fence;
    /// Where the words of an argument ("text", "address" ...) came from. Never null.
    std::function<WordOrigin(std::string_view argument, std::string_view words)> originOf;
    /// Shows the model a picture (PNG). Null: it cannot be shown one.
    std::function<void(const Bytes& picture)> show;
    HelperMail* helper = nullptr;
};

} // namespace quorvell
