// SPDX-License-Identifier: MIT
// A stream that stays on the best device there is while it is wanted: the chosen one, else the desktop's default, else
// any.
#pragma once

#include "Quorvell/loop/GuardedPost.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/sound/PulseStream.h"
#include "Quorvell/sound/SoundServer.h"
#include "Quorvell/sound/StreamRetry.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace quorvell {

/// It moves when devices come and go, and is asked for again when the server ended it. Main thread.
class DeviceStream : private SoundServer::Listener {
public:
    class Owner {
    public:
        /// On the sound thread, with its lock held: so many bytes can be read or written now.
        virtual void streamMovable(pa_stream* stream, std::size_t bytes) = 0;
        virtual void streamOpens() { } ///< Nothing passes yet.
        virtual void streamStarted() { }
        virtual void streamGoes() { } ///< It is still there.
        virtual void streamMissing() { } ///< And none can be had now. The user has been told, if there is more to tell.
        virtual void devicesChanged() { } ///< Of whatever kind, plugs and volumes included.

    protected:
        ~Owner() = default;
    };

    struct Request {
        PulseStream::Direction direction = PulseStream::Direction::record;
        const char* title = ""; ///< For programs that show who uses the sound.
        std::uint32_t queueBytes = 0; ///< As in PulseStream::Request.
    };

    struct Reports {
        std::function<void(const std::string& sentence)> failed; ///< Wanted, and there is none: what to tell the user.
        std::function<void()> recovered; ///< After `failed`: sound passes again.
    };

    /// `server` and `owner` must outlive it.
    DeviceStream(SoundServer& server, Owner& owner, Request request, Reports reports);
    ~DeviceStream() override;

    /// By name; empty for the desktop's default.
    void chooseDevice(std::string name);
    void open();
    void close();
    bool isWanted() const { return m_isWanted; }
    /// Made, though the server may not have answered yet.
    bool isThere() const { return m_stream != nullptr; }
    /// Null until it has started.
    pa_stream* handle() const { return m_stream && m_stream->hasStarted() ? m_stream->handle() : nullptr; }
    /// From now on, while it stays where it is; see PulseStream::Request.
    void setQueue(std::uint32_t bytes);
    /// Where it is; empty until it has started.
    std::string device() const { return m_stream ? m_stream->device() : std::string(); }
    /// The owner's: sound passes, so that earlier failures no longer count.
    void works();

private:
    void soundServerChanged() override;
    /// Brings the stream in line with what is wanted and what is there.
    void review();
    bool isRecording() const { return m_request.direction == PulseStream::Direction::record; }
    const SoundDevice* bestDevice() const;
    bool isOn(const SoundDevice& device) const;
    void makeStream(const SoundDevice& device);
    void dropStream();
    void streamEnded();
    void beWithout(SoundProblem problem);

    SoundServer& m_server;
    Owner& m_owner;
    Request m_request;
    Reports m_reports;
    std::string m_chosen;
    std::string m_wantedDevice;
    bool m_isWanted = false;
    SoundProblem m_told = SoundProblem::none;
    StreamRetry m_retries;
    std::unique_ptr<PulseStream> m_stream;
    TimerHandle m_retry;
    GuardedPost m_post;
};

} // namespace quorvell
