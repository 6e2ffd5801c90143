// SPDX-License-Identifier: MIT
// The desktop's microphone, without the assistant's own voice in it.
#pragma once

#include "Media/audio/EchoReference.h"
#include "Quorvell/loop/GuardedPost.h"
#include "Quorvell/session/ports/AudioCapture.h"
#include "Quorvell/sound/CaptureChain.h"
#include "Quorvell/sound/DeviceStream.h"
#include "Quorvell/sound/SoundServer.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <utility>

namespace quorvell {

/// While it is open it takes the best device there is, also one that comes later. Main thread.
class PulseCapture : public AudioCapture, private DeviceStream::Owner {
public:
    struct Reports {
        /// 40 ms of 16-bit little-endian mono at 24000 Hz.
        std::function<void(std::span<const std::uint8_t> pcm)> captured;
        std::function<void(const std::string& sentence)> failed; ///< Open, but no sound comes: what to tell the user.
        std::function<void()> recovered; ///< After `failed`: sound comes again.
    };

    /// `server` and `reference` must outlive it.
    PulseCapture(SoundServer& server, EchoReference& reference, Reports reports);

    /// By name; empty for the desktop's default.
    void chooseDevice(std::string name) { m_stream.chooseDevice(std::move(name)); }

    void open() override { m_stream.open(); }
    void close() override { m_stream.close(); }
    /// Wanted, and so waited for where there is none.
    bool isOpen() const override { return m_stream.isWanted(); }
    /// The name of the device that is being heard; empty while none is.
    std::string device() const { return m_stream.device(); }

private:
    static constexpr std::uint32_t pieceBytes = 960; ///< 20 ms from the device at a time: half a chunk.
    /// Three chunks at a time while nobody speaks: a quarter of the wake-ups, and the first of speech 80 ms late.
    static constexpr std::uint32_t restingPieceBytes = 5760;
    static constexpr int chunksUntilRest = 125; ///< Five seconds of nothing but the room.

    void streamMovable(pa_stream* stream, std::size_t bytes) override;
    void streamOpens() override;
    /// On the chain's thread.
    void chunkReady(CaptureChain::Chunk chunk);
    void keepPace(bool isOnlyRoom);

    Reports m_reports;
    std::atomic<std::uint64_t> m_opening{0}; ///< Changes with each stream; what an earlier one captured is dropped.
    int m_roomChunks = 0; ///< In a row.
    GuardedPost m_post;
    CaptureChain m_chain;
    DeviceStream m_stream;
};

} // namespace quorvell
