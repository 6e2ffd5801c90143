// SPDX-License-Identifier: MIT
// Keeps the assistant's voice as a recording.
#pragma once

#include "Quorvell/session/ports/AudioPlayer.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

namespace quorvell {

/// Nothing sounds, so nothing has to be waited for.
class ReplyRecorder : public AudioPlayer {
public:
    static constexpr std::size_t mostSamples = 24000 * 600; ///< Ten minutes at the session's rate; the rest is dropped.

    /// `began` is called when the first sound arrives.
    explicit ReplyRecorder(std::function<void()> began)
        : m_began(std::move(began))
    {
    }

    void play(std::span<const std::uint8_t> pcm) override;
    void stop() override { }
    std::chrono::milliseconds unplayed() const override { return {}; }
    std::chrono::milliseconds played() const override
    {
        return std::chrono::milliseconds(m_samples.size() * 1000 / 24000);
    }

    const std::vector<std::int16_t>& samples() const { return m_samples; }

private:
    std::function<void()> m_began;
    std::vector<std::int16_t> m_samples;
};

} // namespace quorvell
