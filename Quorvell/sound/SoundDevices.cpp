// SPDX-License-Identifier: MIT
#include "Quorvell/sound/SoundDevices.h"

#include <algorithm>

namespace quorvell {

namespace {

const SoundDevice* named(const std::vector<SoundDevice>& devices, std::string_view name)
{
    const auto found =
        std::find_if(devices.begin(), devices.end(), [name](const SoundDevice& device) { return device.name == name; });
    return found == devices.end() ? nullptr : &*found;
}

const SoundDevice* pick(const std::vector<SoundDevice>& devices, std::string_view chosen, std::string_view usual)
{
    if (const SoundDevice* device = named(devices, chosen))
        return device;
    const SoundDevice* device = named(devices, usual);
    if (device && !device->isMonitor)
        return device;
    const auto real =
        std::find_if(devices.begin(), devices.end(), [](const SoundDevice& candidate) { return !candidate.isMonitor; });
    return real == devices.end() ? nullptr : &*real;
}

} // namespace

const SoundDevice* SoundDevices::microphone(std::string_view chosen) const
{
    return pick(microphones, chosen, defaultMicrophone);
}

const SoundDevice* SoundDevices::loudspeaker(std::string_view chosen) const
{
    return pick(loudspeakers, chosen, defaultLoudspeaker);
}

} // namespace quorvell
