#pragma once

#include "Quorvell/audio/EchoReference.h"
#include "Quorvell/session/AudioCapture.h"
#include "Quorvell/session/GuardedPost.h"
#include "Quorvell/sound/CaptureChain.h"
#include "Quorvell/sound/PulseStream.h"
#include "Quorvell/sound/SoundServer.h"
#include "Quorvell/sound/StreamRetry.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>

namespace quorvell {

/// The desktop's microphone, without the assistant's own voice in it. While it is open it takes the best device there
/// is, also one that comes later. Main thread.
class PulseCapture : public AudioCapture, private SoundServer::Listener {
public:
    struct Reports {
        /// 40 ms of 16-bit little-endian mono at 24000 Hz.
        std::function<void(std::span<const std::uint8_t> pcm)> captured;
        std::function<void(const std::string& sentence)> failed; ///< Open, but no sound comes: what to tell the user.
        std::function<void()> recovered; ///< After `failed`: sound comes again.
    };

    /// `server` and `reference` must outlive it.
    PulseCapture(SoundServer& server, EchoReference& reference, Reports reports);
    ~PulseCapture() override;

    /// By name; empty for the desktop's default.
    void chooseDevice(std::string name);

    void open() override;
    void close() override;
    /// Wanted, and so waited for where there is none.
    bool isOpen() const override { return m_isWanted; }
    /// The name of the device that is being heard; empty while none is.
    std::string device() const { return m_stream ? m_stream->device() : std::string(); }

private:
    static constexpr std::uint32_t pieceBytes = 960; ///< 20 ms from the device at a time: half a chunk.

    void soundServerChanged() override { review(); }
    /// Brings the stream in line with what is wanted and what is there.
    void review();
    void openStream(const SoundDevice& device);
    void closeStream();
    void streamEnded();
    void tell(SoundProblem problem);
    /// On the chain's thread.
    void chunkReady(Bytes chunk);

    SoundServer& m_server;
    Reports m_reports;
    std::string m_chosen;
    bool m_isWanted = false;
    std::atomic<std::uint64_t> m_opening{0}; ///< Changes with each stream; what an earlier one captured is dropped.
    SoundProblem m_told = SoundProblem::none;
    StreamRetry m_retries;
    std::string m_wantedDevice;
    GuardedPost m_post;
    CaptureChain m_chain;
    std::unique_ptr<PulseStream> m_stream;
    TimerHandle m_retry;
};

} // namespace quorvell
