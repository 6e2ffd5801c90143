// SPDX-License-Identifier: MIT
// The backend's own events, as a server states them: inside a live session (OpenAILiveServerMessage::responseEvent) or
// in a stream of their own (ResponsesStreamWriter).
#pragma once

#include "QuorvellCore/live/wire/openai/OpenAILiveEvent.h"
#include "QuorvellCore/live/wire/openai/OpenAIResponseEnd.h"
#include "QuorvellCore/text/Json.h"

#include <string_view>

namespace quorvell {

struct OpenAIResponseEvent {
    static Json created(std::string_view responseID);
    /// The model has begun to call a tool; arguments are still empty.
    static Json functionCallAdded(const openai_event::FunctionCall& call);
    static Json argumentsDelta(std::string_view text); ///< Of the call that was added last.
    static Json functionCallDone(const openai_event::FunctionCall& call);
    static Json reasoningDelta(std::string_view text);
    static Json reasoningBreak();
    static Json textDelta(std::string_view text);
    static Json textDone(std::string_view text);
    /// "response.completed", "response.failed" and so on.
    static Json ended(const OpenAIResponseEnd& end);
};

} // namespace quorvell
