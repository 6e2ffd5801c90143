// SPDX-License-Identifier: MIT
// One spoken turn from a recording.
#pragma once

#include <optional>
#include <string>

namespace quorvell {

struct ConversationOptions;
struct ProgramEnvironment;

struct TalkFiles {
    std::string recording; ///< Empty: the microphone is meant.
    std::optional<std::string> reply;
};

/// Gives the exit code.
int talkFromRecording(
    const ProgramEnvironment& environment, const ConversationOptions& options, const TalkFiles& files);

} // namespace quorvell
