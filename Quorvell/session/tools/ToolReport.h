// SPDX-License-Identifier: MIT
// What a conversation learns of the tools that run for it.
#pragma once

#include "Quorvell/session/reports/AnsweredCall.h"
#include "Quorvell/session/tools/ToolReply.h"
#include "QuorvellCore/live/wire/vocabulary/LiveFunctionCall.h"
#include "QuorvellCore/live/wire/vocabulary/LiveFunctionResponse.h"

#include <cstdint>
#include <variant>

namespace quorvell {

namespace tool_report {

struct Answered {
    AnsweredCall answered;
    LiveResponseScheduling scheduling = LiveResponseScheduling::whenIdle;
    std::uint64_t askedBy = 0; ///< The line that the call came over.
    enum class Time : std::uint8_t { due, late }; ///< Late: the model was told before that it did not answer.
    Time time = Time::due;
};
/// set_mode, which only the conversation itself can judge.
struct HelpModeAsked {
    LiveFunctionCall call;
    ToolReply reply;
};
/// Likewise, and the user's words on it are complete.
struct HelpModeDue {
    LiveFunctionCall call;
    ToolReply reply;
};
/// A tool has been running for long.
struct TakesLong { };

} // namespace tool_report

using ToolReport =
    std::variant<tool_report::Answered, tool_report::HelpModeAsked, tool_report::HelpModeDue, tool_report::TakesLong>;

} // namespace quorvell
