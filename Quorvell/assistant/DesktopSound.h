// SPDX-License-Identifier: MIT
// Microphone and loudspeaker of the desktop, made together because the one must not hear the other.
#pragma once

#include "Media/audio/EchoReference.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/settings/UserSettings.h"
#include "Quorvell/sound/AlarmPlayer.h"
#include "Quorvell/sound/PulseCapture.h"
#include "Quorvell/sound/PulsePlayer.h"
#include "Quorvell/sound/SoundServer.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>

namespace quorvell {

/// Main thread.
class DesktopSound : private SoundServer::Listener {
public:
    struct Devices {
        std::string microphone; ///< Names; empty for the desktop's default.
        std::string loudspeaker;
    };

    struct Reports {
        std::function<void(std::span<const std::uint8_t> pcm)> captured;
        std::function<void(const std::string& sentence)> failed; ///< Sound that was there is gone, or never came.
    };

    /// The scheduler outlives it.
    DesktopSound(
        const std::string& runtimeFolder, Scheduler& scheduler, const Devices& devices, const Reports& reports);
    ~DesktopSound() override;

    /// Calls back once: an empty text when the server and its devices are known, else why there is no sound.
    void whenKnown(std::function<void(const std::string& problem)> known);
    /// What the server has; of use once it is known.
    const SoundDevices& devices() const { return m_server.devices(); }
    /// A sentence when a chosen device is not there.
    std::string problemOfChoice() const;

    PulseCapture& capture() { return m_capture; }
    PulsePlayer& player() { return m_player; }
    AlarmPlayer& alarm() { return m_alarm; }
    /// Called when an alarm should sound and nothing is heard.
    void onAlarmUnheard(std::function<void()> unheard) { m_alarmUnheard = std::move(unheard); }

private:
    static constexpr std::chrono::milliseconds patience{5'000};

    void soundServerChanged() override;
    void answer(const std::string& problem);

    Devices m_chosen;
    SoundServer m_server;
    EchoReference m_reference;
    PulsePlayer m_player;
    AlarmPlayer m_alarm;
    PulseCapture m_capture;
    std::function<void(const std::string&)> m_known;
    std::function<void()> m_alarmUnheard;
    Scheduler& m_scheduler;
    TimerHandle m_deadline;
};

} // namespace quorvell
