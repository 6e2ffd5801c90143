// SPDX-License-Identifier: MIT
// Turns the protocol's events into the session's vocabulary. | event | becomes | |---|---| | Started | SetupComplete |
// | Audio, InputTranscript, OutputTranscript, Delegated | the same | | FunctionCall | ToolCall with one call; cut off
// when incomplete or unreadable | | Reasoning | Thinking (empty: a break) | | Usage | BilledSeconds and ContextUsage,
// each if present | | BackendUsage | Usage (input and output together), Diagnostic "backend_usage" | | Error |
// ServerError | | BackendStarted, ToolChosen, ServedTier | Diagnostic "backend_started", "tool_chosen", "served_tier" |
// | BackendText | Diagnostic "backend_text" with its length only: the log keeps nothing that was said | | BackendEnded
// | Diagnostic "backend_ended" with the status | | Closed | Diagnostic "session_closed" with the reason; the connection
// reports the closing itself | BackendIdle is not made here: whoever keeps the OpenAIBackendFlow reports it.
#pragma once

#include "QuorvellCore/live/wire/openai/OpenAILiveEvent.h"
#include "QuorvellCore/live/wire/vocabulary/LiveServerEvent.h"

#include <vector>

namespace quorvell {

struct OpenAILiveEventMapper {
    static std::vector<LiveServerEvent> map(OpenAILiveEvent event);
};

} // namespace quorvell
