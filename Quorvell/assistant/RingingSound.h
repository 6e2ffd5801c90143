// SPDX-License-Identifier: MIT
// The sound of alarms in one program: beside its conversation where that has sound, else by a connection of its own for
// as long as something rings.
#pragma once

#include "Quorvell/assistant/DesktopSound.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/reminding/AlarmSound.h"
#include "Quorvell/sound/AlarmPlayer.h"
#include "Quorvell/sound/SoundServer.h"

#include <functional>
#include <memory>
#include <string>

namespace quorvell {

/// Main thread; what it is given outlives it.
class RingingSound final : public AlarmSound {
public:
    RingingSound(std::string runtimeFolder, std::string loudspeaker, Scheduler& scheduler);
    /// Its echo is taken out of what the microphone hears, as that of the voice is.
    RingingSound(DesktopSound& shared, Scheduler& scheduler);
    ~RingingSound() override;

    void start() override;
    void stop() override;
    void onSilence(std::function<void()> isSilent) override { m_isSilent = std::move(isSilent); }

private:
    struct Own;

    void failed();

    Scheduler& m_scheduler;
    DesktopSound* m_shared = nullptr;
    std::string m_runtimeFolder;
    std::string m_loudspeaker;
    std::function<void()> m_isSilent;
    bool m_hasTold = false; ///< Since it began to ring.
    std::unique_ptr<Own> m_own; ///< While it rings.
    GuardedPost m_post;
};

} // namespace quorvell
