// SPDX-License-Identifier: MIT
// What the tools that see the screen and act on it need.
#pragma once

#include "Quorvell/actions/pipeline/ActionPipeline.h"
#include "Quorvell/actions/tools/HelperMail.h"
#include "Quorvell/actions/tools/LookTeller.h"
#include "Quorvell/session/tools/ToolReply.h"
#include "Quorvell/surface/Screen.h"
#include "QuorvellCore/live/wire/vocabulary/LiveFunctionCall.h"
#include "QuorvellCore/text/Bytes.h"

#include <functional>
#include <optional>

namespace quorvell {

struct ActionToolPorts {
    ActionPipeline& pipeline;
    Screen& screen; ///< To read and to search; what acts goes through the pipeline.
    Scheduler& scheduler;
    EventLog& log;
    LookTeller& teller;
    /// Shows the model a picture (PNG). Null: it cannot be shown one.
    std::function<void(const Bytes& picture)> show;
    /// After an action that the user said yes to was done: true where a task goes on from there, took the reply over
    /// and answers it when it ends or asks again. May be null.
    std::function<bool(ToolReply& reply)> carryOn{};
    /// After an action that was seen to work: takes the step that its call named for after it ("then"), of which the
    /// ids are those of `shown`. Answers with nothing where none was taken. May be null.
    std::function<void(const LiveFunctionCall& call, const ScreenLook& shown, const ActionResult& result,
        std::function<void(std::optional<ActionResult>)> answer)>
        follow{};
    HelperMail* helper = nullptr;
};

} // namespace quorvell
