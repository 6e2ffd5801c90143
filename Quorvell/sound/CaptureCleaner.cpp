// SPDX-License-Identifier: MIT
#include "Quorvell/sound/CaptureCleaner.h"

#include "Media/audio/SampleBytes.h"
#include "QuorvellCore/live/gate/PCM.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

float levelOf(std::span<const std::int16_t> samples)
{
    return PCM::levelOfInt16LE(bytesOfSamples(samples));
}

} // namespace

void CaptureCleaner::clean(std::span<std::int16_t, chunkSamples> captured)
{
    const float level = levelOf(captured);
    const bool isSteady = level <= std::max(quietLevel, soundOverNoise * m_noise.floor());
    const bool isEchoPossible = takePlayed(level);
    if (isEchoPossible)
        m_chunksLeft = chunksAfterPlaying;
    else if (!isSteady)
        m_chunksLeft = std::max(m_chunksLeft, chunksAfterSound);
    m_noise.hear(level);
    if (m_chunksLeft == 0)
        return m_noise.suppress(captured);
    --m_chunksLeft;
    cleanFrames(captured);
    if (isSteady && !isEchoPossible)
        m_noise.learn(level, levelOf(captured));
}

bool CaptureCleaner::takePlayed(float heardLevel)
{
    bool isPlaying = false;
    for (std::size_t start = 0; start < chunkSamples; start += frameSamples)
        isPlaying = m_reference.next(std::span(m_played).subspan(start, frameSamples)) || isPlaying;
    if (std::exchange(m_path, m_reference.path()) != m_path)
        m_headphones = {};
    m_headphones.hear(heardLevel, levelOf(m_played));
    if (m_headphones.areOn())
        m_played.fill(0);
    return isPlaying && !m_headphones.areOn();
}

void CaptureCleaner::cleanFrames(std::span<std::int16_t, chunkSamples> captured)
{
    for (std::size_t start = 0; start < chunkSamples; start += frameSamples) {
        m_canceller.analyzeReverse(std::span(m_played).subspan(start).first<frameSamples>());
        m_canceller.process(captured.subspan(start).first<frameSamples>());
    }
}

void CaptureCleaner::restart()
{
    m_reference.restart();
    m_headphones = {};
    m_noise = {};
    m_chunksLeft = chunksAfterPlaying;
}

} // namespace quorvell
