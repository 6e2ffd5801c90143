// SPDX-License-Identifier: MIT
// The voice on the device, for what is said without a model.
#pragma once

#include <string>

namespace quorvell {

/// Main thread.
class SpeechSynthesiser {
public:
    virtual ~SpeechSynthesiser() = default;

    /// Queued behind what is being said.
    virtual void say(const std::string& text) = 0;
    virtual void stop() = 0;
    virtual bool isSpeaking() const = 0;
};

} // namespace quorvell
