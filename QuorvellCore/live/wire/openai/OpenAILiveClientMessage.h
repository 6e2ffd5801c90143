// SPDX-License-Identifier: MIT
// What a client tells the server of a live session, read back into values; the counterpart of OpenAILiveMessage.
#pragma once

#include "QuorvellCore/live/wire/openai/OpenAIAppendIDs.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveSetupOptions.h"
#include "QuorvellCore/live/wire/vocabulary/LiveImage.h"
#include "QuorvellCore/text/Bytes.h"

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace quorvell::openai_client {

struct SessionStart {
    OpenAILiveSetupOptions options;
    std::optional<std::string> eventID;
    bool operator==(const SessionStart&) const = default;
};
struct InputAudio {
    Bytes pcm; ///< 16-bit little-endian mono, the session's rate; whole samples.
    bool operator==(const InputAudio&) const = default;
};
struct Append {
    enum class Kind { instructions, commentary, thinking };
    Kind kind = Kind::instructions;
    std::string text;
    OpenAIAppendIDs ids;
    bool operator==(const Append&) const = default;
};
/// A message for the backend.
struct UserMessage {
    std::string text; ///< The text parts, a line break between two.
    std::vector<LiveImage> images;
    std::optional<std::string> eventID;
    bool operator==(const UserMessage&) const = default;
};
struct FunctionOutput {
    std::string callID;
    std::string output; ///< JSON text of the tool's owner.
    std::optional<std::string> eventID;
    bool operator==(const FunctionOutput&) const = default;
};
struct ResponseCreate {
    std::optional<std::string> eventID;
    bool operator==(const ResponseCreate&) const = default;
};
struct Close {
    std::optional<std::string> eventID;
    bool operator==(const Close&) const = default;
};
/// Nothing that could be acted on. Answer it with an "error" event that carries these.
struct Malformed {
    std::string code; ///< "invalid_json", "unknown_type", "missing_field" or "invalid_value".
    std::string reason; ///< A sentence that names the field.
    std::optional<std::string> eventID;
    bool operator==(const Malformed&) const = default;
};

} // namespace quorvell::openai_client

namespace quorvell {

using OpenAILiveClientMessage = std::variant<openai_client::SessionStart, openai_client::InputAudio,
    openai_client::Append, openai_client::UserMessage, openai_client::FunctionOutput, openai_client::ResponseCreate,
    openai_client::Close, openai_client::Malformed>;

} // namespace quorvell
