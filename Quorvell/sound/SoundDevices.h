// SPDX-License-Identifier: MIT
// The microphones and loudspeakers that are there, and which of them is to be used.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// A microphone or a loudspeaker as the sound server knows it.
struct SoundDevice {
    std::string name; ///< Stays the same from day to day; what settings keep.
    std::string description; ///< For people.
    std::string port; ///< Which of its sockets is in use, as headphones or the loudspeaker inside.
    std::uint32_t volume = 0; ///< In the server's own unit; 0 when muted.
    bool isMonitor = false; ///< No microphone, but what a loudspeaker plays. Taken only when it is chosen by name.

    bool operator==(const SoundDevice&) const = default;
};

/// Everything the sound server has at one moment.
struct SoundDevices {
    std::vector<SoundDevice> microphones;
    std::vector<SoundDevice> loudspeakers;
    std::string defaultMicrophone; ///< A name.
    std::string defaultLoudspeaker;

    /// The chosen one when it is there, else the default, else any. Null when there is none.
    const SoundDevice* microphone(std::string_view chosen) const;
    const SoundDevice* loudspeaker(std::string_view chosen) const;

    bool operator==(const SoundDevices&) const = default;
};

} // namespace quorvell
