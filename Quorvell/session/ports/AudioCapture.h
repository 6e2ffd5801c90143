// SPDX-License-Identifier: MIT
// The microphone as the session uses it.
#pragma once

namespace quorvell {

/// Its sound arrives through SessionController::microphoneCaptured. Main thread.
class AudioCapture {
public:
    virtual ~AudioCapture() = default;

    /// Asks for sound; nothing when it is open. A device that cannot be had is told to the user by the owner.
    virtual void open() = 0;
    /// After this no sound arrives, and the device is let go.
    virtual void close() = 0;
    virtual bool isOpen() const = 0;
};

} // namespace quorvell
