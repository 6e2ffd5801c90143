// SPDX-License-Identifier: MIT
#include "Quorvell/assistant/DesktopSound.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

bool holds(const std::vector<SoundDevice>& devices, const std::string& name)
{
    return name.empty()
        || std::any_of(devices.begin(), devices.end(), [&](const SoundDevice& device) { return device.name == name; });
}

} // namespace

DesktopSound::DesktopSound(
    const std::string& runtimeFolder, Scheduler& scheduler, const Devices& devices, const Reports& reports)
    : m_chosen(devices)
    , m_server({{}, runtimeFolder, "Quorvell"}, scheduler)
    , m_player(m_server, m_reference, {reports.failed, [] {}})
    , m_alarm(m_server, &m_reference,
          {[this] {
               if (m_alarmUnheard)
                   m_alarmUnheard();
           },
              [this] { return m_player.isPlaying(); }})
    , m_capture(m_server, m_reference, {reports.captured, reports.failed, [] {}})
    , m_scheduler(scheduler)
{
    m_player.chooseDevice(devices.loudspeaker);
    m_alarm.chooseDevice(devices.loudspeaker);
    m_capture.chooseDevice(devices.microphone);
    m_server.addListener(*this);
}

DesktopSound::~DesktopSound()
{
    m_server.removeListener(*this);
}

void DesktopSound::whenKnown(std::function<void(const std::string& problem)> known)
{
    m_known = std::move(known);
    m_deadline = m_scheduler.after(patience, [this] {
        const SoundProblem problem = m_server.problem();
        answer(sentenceOf(problem == SoundProblem::none ? SoundProblem::noServer : problem));
    });
    m_scheduler.post([this] { soundServerChanged(); });
}

std::string DesktopSound::problemOfChoice() const
{
    const SoundDevices& devices = m_server.devices();
    for (const auto& [name, isThere] : {std::pair(m_chosen.microphone, holds(devices.microphones, m_chosen.microphone)),
             std::pair(m_chosen.loudspeaker, holds(devices.loudspeakers, m_chosen.loudspeaker))})
        if (!isThere)
            return "There is no sound device \"" + name + "\". `quorvell talk --list-devices` shows what there is.";
    return {};
}

void DesktopSound::soundServerChanged()
{
    if (m_server.isReady())
        answer({});
    else if (m_server.problem() != SoundProblem::none)
        answer(sentenceOf(m_server.problem()));
}

void DesktopSound::answer(const std::string& problem)
{
    m_deadline.cancel();
    if (const auto known = std::exchange(m_known, nullptr))
        known(problem);
}

} // namespace quorvell
