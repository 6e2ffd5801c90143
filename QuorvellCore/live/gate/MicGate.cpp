// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/gate/MicGate.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

/// Keeps the newest `limit` values.
template <typename Value> void keep(std::deque<Value>& values, Value value, std::size_t limit)
{
    values.push_back(std::move(value));
    if (values.size() > limit)
        values.pop_front();
}

} // namespace

std::vector<MicGateOutput> MicGate::process(AudioChunk chunk, float level)
{
    ++chunksHeard;
    const bool isLoud = level > (isOpen ? stayingThreshold() : openingThreshold()); // the floor before this chunk
    keep(levels, level, floorWindow);
    return isOpen ? hearOpen(std::move(chunk), isLoud) : hearClosed(std::move(chunk), isLoud);
}

std::vector<MicGateOutput> MicGate::hearClosed(AudioChunk chunk, bool isLoud)
{
    keep(preRoll, std::move(chunk), preRollChunks);
    keep(recentLoud, isLoud, onsetWindow);
    const auto loud = std::count(recentLoud.begin(), recentLoud.end(), true);
    return loud >= onsetChunks ? open(PreRoll::send) : std::vector<MicGateOutput>{};
}

std::vector<MicGateOutput> MicGate::hearOpen(AudioChunk chunk, bool isLoud)
{
    ++chunksSent;
    std::vector<MicGateOutput> outputs;
    outputs.push_back(MicGateOutput::sound(std::move(chunk)));
    quietChunks = isLoud ? 0 : quietChunks + 1;
    if (!isLoud && quietChunks >= hangover) {
        isOpen = false;
        quietChunks = 0;
        recentLoud.clear();
        outputs.push_back(MicGateOutput::endMark());
    }
    return outputs;
}

std::vector<MicGateOutput> MicGate::open(PreRoll held)
{
    if (isOpen)
        return {};
    isOpen = true;
    ++opens;
    quietChunks = 0;
    recentLoud.clear();
    std::vector<MicGateOutput> outputs;
    for (AudioChunk& chunk : std::exchange(preRoll, {})) {
        if (held == PreRoll::send)
            outputs.push_back(MicGateOutput::sound(std::move(chunk)));
    }
    chunksSent += static_cast<int>(outputs.size());
    return outputs;
}

void MicGate::reset()
{
    const int kept = hangover;
    *this = {};
    hangover = kept;
}

float MicGate::noiseFloor() const
{
    return levels.empty() ? 0.0f : *std::min_element(levels.begin(), levels.end());
}

float MicGate::openingThreshold() const
{
    return std::max(noiseFloor() * openRatio, openLevel);
}

float MicGate::stayingThreshold() const
{
    return std::max(noiseFloor() * stayRatio, stayLevel);
}

} // namespace quorvell
