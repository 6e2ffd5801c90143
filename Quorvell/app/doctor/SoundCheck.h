// SPDX-License-Identifier: MIT
// Opens microphone and loudspeaker for a moment.
#pragma once

#include "Quorvell/app/doctor/DoctorFinding.h"
#include "Quorvell/assistant/DesktopSound.h"
#include "Quorvell/loop/Scheduler.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace quorvell {

/// What it plays is silence, what it hears is only measured. Main thread.
class SoundCheck {
public:
    static constexpr std::chrono::milliseconds listening{1'500};

    SoundCheck(const std::string& runtimeFolder, Scheduler& scheduler, const DesktopSound::Devices& devices);

    /// Calls back once, with the loudspeaker and the microphone.
    void examine(std::function<void(const std::vector<DoctorFinding>&)> done);

    static DoctorFinding microphone(
        const std::string& device, std::size_t chunks, float loudest, const std::string& problem);

private:
    void open(const std::string& problem);
    void judge();

    Scheduler& m_scheduler;
    std::function<void(const std::vector<DoctorFinding>&)> m_done;
    std::string m_problem; ///< As the sound tells it.
    std::size_t m_chunks = 0;
    float m_loudest = 0;
    TimerHandle m_end;
    DesktopSound m_sound; ///< Last: it reports to all of the above.
};

} // namespace quorvell
