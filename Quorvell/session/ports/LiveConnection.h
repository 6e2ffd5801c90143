// SPDX-License-Identifier: MIT
// One live conversation with a model, as the session sees it, whichever service and transport carry it.
#pragma once

#include "Quorvell/session/ports/LiveMessageText.h"
#include "Quorvell/session/ports/LiveSetup.h"
#include "QuorvellCore/live/wire/vocabulary/LiveFunctionResponse.h"

#include <cstdint>
#include <span>
#include <string>

namespace quorvell {

/// Used once: opened, talked over, closed. Main thread. Facts go to its LiveConnectionObserver, never from inside the
/// constructor or `open`.
class LiveConnection {
public:
    virtual ~LiveConnection() = default;

    virtual void open(const LiveSetup& setup) = 0;
    /// 16-bit little-endian mono at 24000 Hz.
    virtual void sendAudio(std::span<const std::uint8_t> pcm) = 0;
    /// The microphone has gone quiet; nothing follows until the next sound.
    virtual void sendAudioPause() = 0;
    virtual void sendMessage(const LiveMessageText& message) = 0;
    /// Asks the model to answer what it was told so far.
    virtual void requestAnswer() = 0;
    /// Tells the voice what to say or to keep in mind now.
    virtual void sendVoiceInstructions(const std::string& text) = 0;
    virtual void sendToolResponse(const LiveFunctionResponse& response, LiveResponseScheduling scheduling) = 0;
    /// Forgets messages that still wait and are worthless by now.
    virtual void dropStale() = 0;
    /// Ends the conversation in an orderly way; liveConnectionClosed follows.
    virtual void close() = 0;
};

} // namespace quorvell
