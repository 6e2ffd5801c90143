// SPDX-License-Identifier: MIT
// What a live session tells the client, one value for each fact. Backend events are those of the delegated model.
#pragma once

#include "QuorvellCore/text/Bytes.h"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

namespace quorvell::openai_event {

struct Started {
    std::string sessionID;
    bool operator==(const Started&) const = default;
};
struct Audio {
    Bytes pcm; ///< 16-bit little-endian mono, the session's rate.
    bool operator==(const Audio&) const = default;
};
struct InputTranscript {
    std::string delta;
    bool operator==(const InputTranscript&) const = default;
};
struct OutputTranscript {
    std::string delta;
    bool operator==(const OutputTranscript&) const = default;
};
struct Delegated {
    std::string delegationID;
    bool operator==(const Delegated&) const = default;
};
struct BackendStarted {
    std::string responseID;
    bool operator==(const BackendStarted&) const = default;
};
struct BackendEnded {
    std::string responseID;
    std::string status; ///< "completed", "failed", "incomplete" or "cancelled", or what the server said instead.
    bool operator==(const BackendEnded&) const = default;
};
struct FunctionCall {
    std::string callID;
    std::string name;
    std::string arguments; ///< JSON text as the model wrote it, possibly cut off.
    bool incomplete = false;
    bool operator==(const FunctionCall&) const = default;
};
struct ToolChosen {
    std::string name;
    bool operator==(const ToolChosen&) const = default;
};
struct Reasoning {
    std::string delta; ///< Empty marks the break between two parts of the summary.
    bool operator==(const Reasoning&) const = default;
};
struct BackendText {
    std::string text; ///< Whole, not a delta.
    bool operator==(const BackendText&) const = default;
};
struct Usage {
    std::optional<double> seconds; ///< Billed so far.
    std::optional<double> contextRatio; ///< 0 to 1.
    bool operator==(const Usage&) const = default;
};
struct BackendUsage {
    std::int64_t inputTokens = 0;
    std::int64_t cachedTokens = 0; ///< Part of the input.
    std::int64_t outputTokens = 0;
    bool operator==(const BackendUsage&) const = default;
};
struct ServedTier {
    std::string tier;
    bool operator==(const ServedTier&) const = default;
};
struct Error {
    std::optional<std::string> code;
    std::optional<std::string> message;
    std::optional<std::string> clientEventID; ///< The client's message that was refused.
    bool operator==(const Error&) const = default;
};
struct Closed {
    std::string reason; ///< "unknown" when the server gave none.
    bool operator==(const Closed&) const = default;
};

} // namespace quorvell::openai_event

namespace quorvell {

using OpenAILiveEvent = std::variant<openai_event::Started, openai_event::Audio, openai_event::InputTranscript,
    openai_event::OutputTranscript, openai_event::Delegated, openai_event::BackendStarted, openai_event::BackendEnded,
    openai_event::FunctionCall, openai_event::ToolChosen, openai_event::Reasoning, openai_event::BackendText,
    openai_event::Usage, openai_event::BackendUsage, openai_event::ServedTier, openai_event::Error,
    openai_event::Closed>;

} // namespace quorvell
