// SPDX-License-Identifier: MIT
// A private sound server with the program's microphone and loudspeaker on it, for tests.
#pragma once

#include "PrivatePulse.h"
#include "Quorvell/sound/PulseCapture.h"
#include "Quorvell/sound/PulsePlayer.h"
#include "QuorvellCore/live/gate/PCM.h"
#include "RealScheduler.h"

#include <cmath>
#include <numbers>
#include <string>
#include <vector>

namespace quorvell::test {

/// Bursts of a tone, 100 ms of sound and 100 ms of silence: steady sound would count as noise.
inline Bytes bursts(int hertz, std::chrono::milliseconds length)
{
    std::vector<float> samples(static_cast<std::size_t>(length.count()) * 24);
    for (std::size_t index = 0; index < samples.size(); ++index) {
        const double time = static_cast<double>(index) / 24000;
        if (index / 2400 % 2 == 0)
            samples[index] = 0.5F * static_cast<float>(std::sin(2 * std::numbers::pi * hertz * time));
    }
    return PCM::floatToInt16LE(samples);
}

/// A private sound server with the program's microphone and loudspeaker on it, and what they reported.
struct SoundRig {
    explicit SoundRig(std::vector<std::string> modules, PrivatePulse::Server kind = PrivatePulse::Server::pulseAudio)
        : pulse(std::move(modules), {}, kind)
    {
    }

    bool waitFor(const std::function<bool()>& isDone) { return scheduler.runUntil(isDone); }
    int loudChunks() const
    {
        return static_cast<int>(std::count_if(levels.begin(), levels.end(), [](float level) { return level > 0.1F; }));
    }

    PrivatePulse pulse;
    RealScheduler scheduler;
    SoundServer server{{pulse.address(), pulse.folder(), "Test"}, scheduler};
    EchoReference playedHere; ///< Kept apart, so that the tests hear what is played.
    EchoReference heardBeside;
    std::vector<float> levels;
    std::vector<std::string> microphoneReports; ///< Sentences; "recovered" in between.
    std::vector<std::string> playerReports;
    PulseCapture capture{server, heardBeside,
        {[this](std::span<const std::uint8_t> pcm) { levels.push_back(PCM::levelOfInt16LE(pcm)); },
            [this](const std::string& sentence) { microphoneReports.push_back(sentence); },
            [this] { microphoneReports.emplace_back("recovered"); }}};
    PulsePlayer player{server, playedHere,
        {[this](const std::string& sentence) { playerReports.push_back(sentence); },
            [this] { playerReports.emplace_back("recovered"); }}};
};

} // namespace quorvell::test
