// SPDX-License-Identifier: MIT
#include "Media/webrtc/DrivenDevice.h"

namespace quorvell {

std::int32_t DrivenDevice::RegisterAudioCallback(webrtc::AudioTransport* transport)
{
    const std::lock_guard lock(m_mutex);
    m_transport = transport;
    return 0;
}

void DrivenDevice::drive()
{
    const std::lock_guard lock(m_mutex);
    if (m_transport && m_isRecording)
        give(*m_transport);
    if (m_transport && m_isPlaying)
        take(*m_transport);
}

std::int32_t DrivenDevice::set(std::atomic<bool>& flag, bool value)
{
    flag = value;
    return 0;
}

} // namespace quorvell
