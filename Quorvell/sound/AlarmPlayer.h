// SPDX-License-Identifier: MIT
// Plays the tone of an alarm, by a stream of its own: a conversation goes on beside it.
#pragma once

#include "Media/audio/EchoReference.h"
#include "Quorvell/sound/AlarmTone.h"
#include "Quorvell/sound/DeviceStream.h"
#include "Quorvell/sound/SoundServer.h"

#include <array>
#include <cstdint>
#include <functional>
#include <string>

namespace quorvell {

/// It sounds on when the sound server was restarted or the loudspeaker replaced. Main thread.
class AlarmPlayer final : private DeviceStream::Owner {
public:
    struct Reports {
        std::function<void()> failed; ///< It should sound, and nothing is heard.
        /// With the sound thread's lock held: whether the assistant's voice plays, which is in the reference already.
        std::function<bool()> isVoicePlaying = nullptr;
    };

    /// `server` and `reference` must outlive it. Without a reference nobody listens beside it.
    AlarmPlayer(SoundServer& server, EchoReference* reference, Reports reports);

    /// By name; empty for the desktop's default.
    void chooseDevice(std::string name) { m_stream.chooseDevice(std::move(name)); }
    void start();
    /// Within a few milliseconds.
    void stop();

private:
    static constexpr std::uint32_t queueBytes =
        5760; ///< 120 ms at the server, so that a busy computer plays without gaps.
    static constexpr std::size_t pieceSamples = 480; ///< 20 ms.

    void streamMovable(pa_stream* stream, std::size_t bytes) override;
    void streamStarted() override;
    void streamMissing() override { m_reports.failed(); }
    void pump(pa_stream* stream, std::size_t bytes); ///< With the sound thread's lock held.

    SoundServer& m_server;
    EchoReference* m_reference;
    Reports m_reports;
    AlarmTone m_tone; ///< The sound thread's while the stream plays.
    std::array<std::int16_t, pieceSamples> m_piece{};
    DeviceStream m_stream;
};

} // namespace quorvell
