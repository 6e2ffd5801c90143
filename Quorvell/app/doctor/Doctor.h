// SPDX-License-Identifier: MIT
// Looks at everything a conversation needs, and says for each thing whether it works and what to do when it does not.
#pragma once

#include "Quorvell/app/doctor/DoctorFinding.h"
#include "Quorvell/app/doctor/OwnServicesCheck.h"
#include "Quorvell/app/doctor/ServiceCheck.h"
#include "Quorvell/app/doctor/SoundCheck.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/settings/ProgramEnvironment.h"
#include "Quorvell/settings/UserSettings.h"

#include <functional>
#include <memory>
#include <vector>

namespace quorvell {

/// Opens what it checks for real: the microphone, the loudspeaker (silently), the service. Main thread.
class Doctor {
public:
    Doctor(const ProgramEnvironment& environment, Scheduler& scheduler);

    /// Calls back once with everything that was found, in the order in which it is shown.
    void examine(std::function<void(const std::vector<DoctorFinding>&)> done);

    // Each looks at one thing that needs no waiting.
    static DoctorFinding settings(const UserSettings::Reading& reading);
    static DoctorFinding keys(const LiveKeys& keys, LiveBackend backend);
    /// The models that decide steps on the screen.
    static std::vector<DoctorFinding> deciders(const DeciderSettings& settings, const DeciderKeys& keys);
    static DoctorFinding notebook(const std::string& folder);
    /// `isOfDesktop`: a service of the desktop keeps calendars.
    static DoctorFinding calendar(const std::string& folder, bool isOfDesktop);
    static DoctorFinding stateFolder(const std::string& folder);
    static DoctorFinding models(const std::string& programFolder);
    static std::vector<DoctorFinding> bus(bool hasSessionBus);

private:
    void finishWhenComplete();

    ProgramEnvironment m_environment;
    Scheduler& m_scheduler;
    std::vector<DoctorFinding> m_findings;
    std::vector<DoctorFinding> m_soundFindings;
    std::unique_ptr<ServiceCheck> m_service;
    std::unique_ptr<OwnServicesCheck> m_own;
    std::unique_ptr<SoundCheck> m_sound;
    std::function<void(const std::vector<DoctorFinding>&)> m_done;
    int m_waitingFor = 0;
};

} // namespace quorvell
