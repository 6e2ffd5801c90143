// SPDX-License-Identifier: MIT
// One stream of 16-bit mono at 24000 Hz from or to a device.
#pragma once

#include "Quorvell/loop/GuardedPost.h"
#include "Quorvell/sound/SoundServer.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

struct pa_stream;

namespace quorvell {

/// Made, used and destroyed on the main thread; the sound thread only calls `Reports::movable`.
class PulseStream {
public:
    static constexpr int sampleRateHz = 24000;

    enum class Direction { record, playback };
    struct Request {
        Direction direction = Direction::record;
        std::string title; ///< For programs that show who uses the sound.
        std::string device; ///< Empty for the default one, which the stream then follows.
        std::uint32_t queueBytes = 0; ///< How much waits at most between program and device, if the device can do it.
    };
    struct Reports {
        /// On the sound thread, with its lock held: so many bytes can be read or written now.
        std::function<void(pa_stream*, std::size_t)> movable;
        std::function<void()> started; ///< Main thread.
        std::function<void()> ended; ///< Main thread: refused, or the device has gone. Nothing follows.
    };

    PulseStream(SoundServer& server, const Request& request, Reports reports);
    ~PulseStream();
    PulseStream(const PulseStream&) = delete;
    PulseStream& operator=(const PulseStream&) = delete;

    /// Where it is now, which may be another device than the one that was asked for. Empty until it has started.
    std::string device() const;
    bool hasStarted() const { return m_hasStarted; }
    /// Of one that has started: from now on so much waits.
    void setQueue(std::uint32_t bytes);
    /// With the lock held. Null when the server did not take the stream at all.
    pa_stream* handle() const { return m_stream; }

private:
    void changed(int state);
    bool connect(const Request& request);

    SoundServer& m_server;
    Reports m_reports;
    pa_stream* m_stream = nullptr;
    bool m_hasStarted = false;
    GuardedPost m_post;
};

} // namespace quorvell
