// SPDX-License-Identifier: MIT
#include "Quorvell/assistant/RingingSound.h"

#include <utility>

namespace quorvell {

struct RingingSound::Own {
    Own(const std::string& runtimeFolder, Scheduler& scheduler, std::function<void()> failed)
        : server({{}, runtimeFolder, "Quorvell"}, scheduler)
        , player(server, nullptr, {std::move(failed)})
    {
    }

    SoundServer server;
    AlarmPlayer player;
};

RingingSound::RingingSound(std::string runtimeFolder, std::string loudspeaker, Scheduler& scheduler)
    : m_scheduler(scheduler)
    , m_runtimeFolder(std::move(runtimeFolder))
    , m_loudspeaker(std::move(loudspeaker))
    , m_post(scheduler)
{
}

RingingSound::RingingSound(DesktopSound& shared, Scheduler& scheduler)
    : m_scheduler(scheduler)
    , m_shared(&shared)
    , m_post(scheduler)
{
    m_shared->onAlarmUnheard([this] { failed(); });
}

RingingSound::~RingingSound()
{
    if (!m_shared)
        return;
    m_shared->onAlarmUnheard(nullptr);
    m_shared->alarm().stop();
}

void RingingSound::start()
{
    if (m_shared)
        return m_shared->alarm().start();
    if (m_own)
        return;
    m_own = std::make_unique<Own>(m_runtimeFolder, m_scheduler, [this] { failed(); });
    m_own->player.chooseDevice(m_loudspeaker);
    m_own->player.start();
}

void RingingSound::stop()
{
    m_hasTold = false;
    if (m_shared)
        m_shared->alarm().stop();
    m_own = nullptr;
}

void RingingSound::failed()
{
    if (std::exchange(m_hasTold, true))
        return;
    m_post([this] {
        if (m_isSilent)
            m_isSilent();
    });
}

} // namespace quorvell
