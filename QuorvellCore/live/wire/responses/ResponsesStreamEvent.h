// SPDX-License-Identifier: MIT
// What an answer of the Responses service says while it streams in, one value for each fact.
#pragma once

#include "QuorvellCore/live/wire/vocabulary/LiveServerEvent.h"

#include <string>
#include <variant>

namespace quorvell::responses_event {

struct Started {
    std::string responseID;
    bool operator==(const Started&) const = default;
};
struct TextDelta {
    std::string delta;
    bool operator==(const TextDelta&) const = default;
};
/// A whole part of the answer; its deltas came before.
struct Text {
    std::string text;
    bool operator==(const Text&) const = default;
};
/// The last event of every stream that was not cut off.
struct Ended {
    std::string responseID;
    std::string status; ///< "completed", "failed", "incomplete" or "cancelled", or what the server said instead.
    std::string detail{}; ///< What failed, in the server's words, or why it is incomplete ("max_output_tokens").
    bool operator==(const Ended&) const = default;
};

} // namespace quorvell::responses_event

namespace quorvell {

/// Everything else is already in the session's words: tool calls, thinking, usage, errors and diagnostics.
using ResponsesStreamEvent = std::variant<LiveServerEvent, responses_event::Started, responses_event::TextDelta,
    responses_event::Text, responses_event::Ended>;

} // namespace quorvell
