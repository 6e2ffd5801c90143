// SPDX-License-Identifier: MIT
// What a live backend can tell the session. Both backends end in this vocabulary; the session knows no other.
#pragma once

#include "QuorvellCore/live/wire/vocabulary/LiveFunctionCall.h"
#include "QuorvellCore/text/Bytes.h"

#include <chrono>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace quorvell::live_event {

struct Audio {
    Bytes pcm;
    bool operator==(const Audio&) const = default;
}; ///< 16-bit little-endian mono.
struct InputTranscript {
    std::string text;
    bool operator==(const InputTranscript&) const = default;
}; ///< Delta.
struct OutputTranscript {
    std::string text;
    bool operator==(const OutputTranscript&) const = default;
}; ///< Delta.
struct ToolCall {
    std::vector<LiveFunctionCall> calls;
    bool operator==(const ToolCall&) const = default;
};
struct ToolCallCancellation {
    std::vector<std::string> ids;
    bool operator==(const ToolCallCancellation&) const = default;
};
struct GoAway {
    std::optional<std::chrono::milliseconds> timeLeft;
    bool operator==(const GoAway&) const = default;
};
struct ResumptionHandle {
    std::string handle;
    bool operator==(const ResumptionHandle&) const = default;
};
struct Usage {
    std::int64_t totalTokens = 0;
    bool operator==(const Usage&) const = default;
};
struct BilledSeconds {
    double seconds = 0;
    bool operator==(const BilledSeconds&) const = default;
};
struct ServerError {
    std::optional<std::string> code;
    std::string message; ///< From a connection, a sentence for the user.
    std::optional<std::string> clientEventID{}; ///< Of the message that it is about, where one is named.
    bool operator==(const ServerError&) const = default;
};
struct Diagnostic {
    std::string name;
    std::string detail;
    bool operator==(const Diagnostic&) const = default;
}; ///< For the event log.
struct ContextUsage {
    double ratio = 0;
    bool operator==(const ContextUsage&) const = default;
}; ///< 0 to 1.
struct Thinking {
    std::string text;
    bool operator==(const Thinking&) const = default;
}; ///< Delta; empty marks a break.
struct BackendIdle {
    bool operator==(const BackendIdle&) const = default;
}; ///< Nothing runs and nothing is owed.
struct SetupComplete {
    std::string sessionID;
    bool operator==(const SetupComplete&) const = default;
};
struct Interrupted {
    bool operator==(const Interrupted&) const = default;
};
struct GenerationComplete {
    bool operator==(const GenerationComplete&) const = default;
};
struct TurnComplete {
    bool operator==(const TurnComplete&) const = default;
};
struct VoiceActivity {
    bool speaking = false;
    bool operator==(const VoiceActivity&) const = default;
};
struct Delegated {
    std::string delegationID;
    bool operator==(const Delegated&) const = default;
};

} // namespace quorvell::live_event

namespace quorvell {

using LiveServerEvent =
    std::variant<live_event::Audio, live_event::InputTranscript, live_event::OutputTranscript, live_event::ToolCall,
        live_event::ToolCallCancellation, live_event::GoAway, live_event::ResumptionHandle, live_event::Usage,
        live_event::BilledSeconds, live_event::ServerError, live_event::Diagnostic, live_event::ContextUsage,
        live_event::Thinking, live_event::BackendIdle, live_event::SetupComplete, live_event::Interrupted,
        live_event::GenerationComplete, live_event::TurnComplete, live_event::VoiceActivity, live_event::Delegated>;

} // namespace quorvell
