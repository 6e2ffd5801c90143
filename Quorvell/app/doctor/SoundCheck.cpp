// SPDX-License-Identifier: MIT
#include "Quorvell/app/doctor/SoundCheck.h"

#include "QuorvellCore/live/gate/PCM.h"
#include "QuorvellCore/text/Bytes.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

using Verdict = DoctorFinding::Verdict;

constexpr const char* typingWorks = "Until then, quorvell chat works without sound.";

/// A problem that is told says itself what still works.
DoctorFinding limited(const char* subject, const std::string& problem, const char* otherwise)
{
    return {subject, Verdict::limited, problem.empty() ? otherwise : problem, problem.empty() ? typingWorks : ""};
}

DoctorFinding loudspeaker(const std::string& device, std::chrono::milliseconds played, const std::string& problem)
{
    if (device.empty() || played <= std::chrono::milliseconds::zero())
        return limited("loudspeaker", problem, "the sound server takes no sound, or plays none of it");
    return {"loudspeaker", Verdict::works, device};
}

} // namespace

SoundCheck::SoundCheck(const std::string& runtimeFolder, Scheduler& scheduler, const DesktopSound::Devices& devices)
    : m_scheduler(scheduler)
    , m_sound(runtimeFolder, scheduler, devices,
          {[this](std::span<const std::uint8_t> pcm) {
               ++m_chunks;
               m_loudest = std::max(m_loudest, PCM::levelOfInt16LE(pcm));
           },
              [this](const std::string& sentence) { m_problem = sentence; }})
{
}

void SoundCheck::examine(std::function<void(const std::vector<DoctorFinding>&)> done)
{
    m_done = std::move(done);
    m_sound.whenKnown([this](const std::string& problem) { open(problem); });
}

DoctorFinding SoundCheck::microphone(
    const std::string& device, std::size_t chunks, float loudest, const std::string& problem)
{
    if (device.empty() || chunks == 0)
        return limited("microphone", problem, "it is there, and no sound comes from it");
    if (loudest <= 0)
        return {"microphone", Verdict::limited, device + " gives nothing but complete silence",
            "Look whether it is muted, by a switch on it or in the sound settings of the desktop."};
    return {"microphone", Verdict::works, device};
}

void SoundCheck::open(const std::string& problem)
{
    const std::string trouble = problem.empty() ? m_sound.problemOfChoice() : problem;
    if (!trouble.empty())
        return m_done({limited("sound", trouble, "")});
    m_sound.capture().open();
    constexpr std::size_t silentBytes = 24'000; // Half a second at 24000 Hz.
    m_sound.player().play(Bytes(silentBytes));
    m_end = m_scheduler.after(listening, [this] { judge(); });
}

void SoundCheck::judge()
{
    const std::vector<DoctorFinding> findings{
        loudspeaker(m_sound.player().device(), m_sound.player().played(), m_problem),
        microphone(m_sound.capture().device(), m_chunks, m_loudest, m_problem)};
    m_sound.capture().close();
    m_done(findings);
}

} // namespace quorvell
