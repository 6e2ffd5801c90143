// SPDX-License-Identifier: MIT
// The desktop's loudspeaker.
#pragma once

#include "Media/audio/EchoReference.h"
#include "Quorvell/session/ports/AudioPlayer.h"
#include "Quorvell/sound/DeviceStream.h"
#include "Quorvell/sound/SoundServer.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace quorvell {

/// Counts what was really heard, falls silent at once, and goes on when the sound server was restarted or the
/// loudspeaker replaced. Main thread.
class PulsePlayer : public AudioPlayer, private DeviceStream::Owner {
public:
    /// 120 ms wait at the server, so that a busy computer plays without gaps. Stopping drops them.
    static constexpr std::uint32_t queueBytes = 5760;
    /// What is to be said waits so long for a loudspeaker that comes back; then it is dropped, as nobody hears it.
    static constexpr std::chrono::milliseconds patience{3000};
    /// After so long without sound the device may go to sleep.
    static constexpr std::chrono::milliseconds restAfter{3000};
    static constexpr std::size_t mostWaitingSamples = std::size_t{24000} * 60 * 20; ///< Twenty minutes; then dropped.

    struct Reports {
        std::function<void(const std::string& sentence)> failed; ///< Nothing is heard: what to tell the user.
        std::function<void()> recovered; ///< After `failed`: a loudspeaker is there again.
    };

    /// `server` and `reference` must outlive it. What is played is given to `reference` too.
    PulsePlayer(SoundServer& server, EchoReference& reference, Reports reports);

    /// By name; empty for the desktop's default.
    void chooseDevice(std::string name) { m_stream.chooseDevice(std::move(name)); }
    /// The name of the device that plays; empty while none does.
    std::string device() const { return m_stream.device(); }

    void play(std::span<const std::uint8_t> pcm) override;
    void stop() override;
    std::chrono::milliseconds unplayed() const override;
    std::chrono::milliseconds played() const override;
    /// With the sound thread's lock held: whether something is heard or waits to be.
    bool isPlaying() const { return !isSilent(); }

private:
    /// What the sound thread moves from; guarded by its lock. The sound thread only reads the blocks: they are made and
    /// taken away on the main thread.
    struct Waiting {
        std::deque<std::vector<std::int16_t>> blocks;
        std::size_t block = 0; ///< The first that is not wholly given to the server.
        std::size_t offset = 0; ///< In it.
        std::int64_t samples = 0; ///< From there on.
        std::int64_t given = 0; ///< To the stream that plays now, since its last flush.
    };
    /// When sound last began after silence. Nothing is heard sooner than it could be.
    struct Beginning {
        std::uint64_t microseconds = 0; ///< On the sound thread's clock.
        std::int64_t heardOfGiven = 0; ///< Before that.
    };

    void streamMovable(pa_stream* stream, std::size_t bytes) override;
    void streamStarted() override;
    /// And with it what it had not played.
    void streamGoes() override;
    void streamMissing() override;
    void devicesChanged() override { m_reference.changePath(); }
    void startStream();
    void restIfSilent();
    void forgetWaiting();

    // With the sound thread's lock held
    void pump(pa_stream* stream, std::size_t bytes);
    /// What the server has and was not heard is not heard any more.
    void forgetGiven();
    std::int64_t heardOfGiven() const;
    std::int64_t heard() const { return m_heardBefore + heardOfGiven(); }
    bool isSilent() const { return m_waiting.samples == 0 && heardOfGiven() == m_waiting.given; }

    SoundServer& m_server;
    EchoReference& m_reference;
    Waiting m_waiting;
    Beginning m_beginning;
    std::int64_t m_heardBefore = 0; ///< Samples of what was given to earlier streams, or flushed.
    mutable std::int64_t m_heardOfGiven = 0; ///< At the last look, so that the count never goes back.
    bool m_isCorked = true;
    bool m_isHopeless = false; ///< No loudspeaker, and `patience` is over: nothing is kept.
    TimerHandle m_giveUp;
    TimerHandle m_rest;
    DeviceStream m_stream;
};

} // namespace quorvell
