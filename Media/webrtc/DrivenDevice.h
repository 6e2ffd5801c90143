// SPDX-License-Identifier: MIT
// What the WebRTC library takes for the computer's sound device. It asks it for nothing by itself: somebody has to
// drive it every 10 ms.
#pragma once

#include <modules/audio_device/include/audio_device_default.h>

#include <atomic>
#include <cstdint>
#include <mutex>

namespace quorvell {

class DrivenDevice : public webrtc::webrtc_impl::AudioDeviceModuleDefault<webrtc::AudioDeviceModule> {
public:
    std::int32_t RegisterAudioCallback(webrtc::AudioTransport* transport) override;
    std::int16_t PlayoutDevices() override { return 1; }
    std::int16_t RecordingDevices() override { return 1; }
    std::int32_t StartPlayout() override { return set(m_isPlaying, true); }
    std::int32_t StopPlayout() override { return set(m_isPlaying, false); }
    bool Playing() const override { return m_isPlaying; }
    std::int32_t StartRecording() override { return set(m_isRecording, true); }
    std::int32_t StopRecording() override { return set(m_isRecording, false); }
    bool Recording() const override { return m_isRecording; }

protected:
    /// One tick: what is recorded, then what is heard, as far as the library wants them.
    void drive();

private:
    virtual void give(webrtc::AudioTransport& transport) = 0;
    virtual void take(webrtc::AudioTransport& transport) = 0;

    static std::int32_t set(std::atomic<bool>& flag, bool value);

    std::mutex m_mutex; ///< The library takes its callback away from another thread.
    webrtc::AudioTransport* m_transport = nullptr;
    std::atomic<bool> m_isPlaying{false};
    std::atomic<bool> m_isRecording{false};
};

} // namespace quorvell
