// SPDX-License-Identifier: MIT
// Carries out the calls of the tools that act, step by step, through the one way to the screen.
#pragma once

#include "Quorvell/actions/tools/ActionArguments.h"
#include "Quorvell/actions/tools/ActionToolPorts.h"
#include "QuorvellCore/live/tools/ToolResult.h"
#include "QuorvellCore/live/wire/vocabulary/LiveFunctionCall.h"

#include <memory>
#include <variant>

namespace quorvell {

/// Answers {"status": "acted", "message", "verified", "screen"}, {"status": "needs_confirmation", "question",
/// "message"}, {"status": "stopped", "message"} or {"error"}; those of several steps tell under "steps" what became of
/// each, and stop at the first that does not succeed. Main thread.
class ActingTools {
public:
    explicit ActingTools(ActionToolPorts ports);

    void act(const LiveFunctionCall& call, ToolReply reply);
    /// confirm_action
    void confirm(const LiveFunctionCall& call, ToolReply reply);

    /// An answer in the form of a tool's; what it leaves on the screen is told through `teller`.
    static ToolResult resultOf(const ActionResult& result, LookTeller& teller);

private:
    struct Series;

    void next(const std::shared_ptr<Series>& series);
    void ended(const std::shared_ptr<Series>& series, const ActionResult& result);
    void follow(const std::shared_ptr<Series>& series, const ActionResult& result);
    void answer(const std::shared_ptr<Series>& series, const ActionResult& result);
    std::variant<ScreenAction, std::string> onLatestLook(const ScreenAction& action, const ScreenLook* shown) const;

    ActionToolPorts m_ports;
    std::shared_ptr<ActingTools*> m_self;
};

} // namespace quorvell
