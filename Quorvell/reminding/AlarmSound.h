// SPDX-License-Identifier: MIT
// What is heard while an alarm rings.
#pragma once

#include <functional>

namespace quorvell {

/// Main thread.
class AlarmSound {
public:
    virtual ~AlarmSound() = default;

    /// Softly at first, louder over a minute. One that sounds already goes on as it is.
    virtual void start() = 0;
    virtual void stop() = 0;
    /// Called when it should sound and nothing can be heard; never inside `start`.
    virtual void onSilence(std::function<void()> isSilent) = 0;
};

} // namespace quorvell
