// SPDX-License-Identifier: MIT
// A conversation through microphone and loudspeaker, from its start to its end.
#pragma once

#include <optional>
#include <string>

namespace quorvell {

struct ConversationOptions;
struct ProgramEnvironment;

/// From the command line; what is absent comes from the settings.
struct TalkWishes {
    std::optional<std::string> microphone;
    std::optional<std::string> loudspeaker;
    bool isPushToTalk = false;
};

// Each gives the exit code.

/// A conversation through microphone and loudspeaker, until the user leaves.
int talkAloud(const ProgramEnvironment& environment, const ConversationOptions& options, const TalkWishes& wishes);
int listSoundDevices(const ProgramEnvironment& environment, bool asJson);

} // namespace quorvell
