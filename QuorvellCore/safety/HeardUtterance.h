// SPDX-License-Identifier: MIT
// What the user is said to have said, with what is known of how it came.
#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace quorvell {

/// All times by one clock that only goes forward. A value; any thread.
struct HeardUtterance {
    enum class How { spoken, typed, pressed };

    /// Speech that the microphone heard, after echo cancellation, and that was sent.
    struct Sound {
        std::chrono::milliseconds from{};
        std::chrono::milliseconds to{}; ///< Its last loud sound so far.
        bool operator==(const Sound&) const = default;
    };

    std::string text; ///< All of it, as the model gets it.
    std::string ownWords{}; ///< Without what was pasted; spoken words are all their own.
    How how = How::spoken;
    std::chrono::milliseconds at{}; ///< When it was complete.
    /// What the words were understood from, as far as the microphone can tell. Absent where it heard nothing that is
    /// not accounted for by earlier words, and for what was not spoken.
    std::optional<Sound> sound{};
    std::chrono::milliseconds voiceUntil{}; ///< When our own voice had last to sound, as known when the sound began.
    std::string voiceWords{}; ///< What our own voice said while the sound lasted.

    bool operator==(const HeardUtterance&) const = default;
};

} // namespace quorvell
