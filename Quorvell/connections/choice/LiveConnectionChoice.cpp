// SPDX-License-Identifier: MIT
#include "Quorvell/connections/choice/LiveConnectionChoice.h"

#include "Quorvell/connections/gemini/LiveClient.h"
#include "Quorvell/connections/openai/OpenAILiveClient.h"
#include "Quorvell/connections/responses/ResponsesTextConnection.h"
#include "Quorvell/preferences/LiveBackendTraits.h"

#include <utility>

namespace quorvell {

using Way = OpenAIRoute::Way;

LiveConnectionChoice::LiveConnectionChoice(LiveAccessSource& source, Settings settings, Networks networks)
    : m_source(source)
    , m_settings(std::move(settings))
    , m_networks(std::move(networks))
{
}

LiveProtocol LiveConnectionChoice::protocolFor(const Settings& settings, LiveMedium medium)
{
    const LiveBackendTraits& backend = LiveBackendTraits::of(settings.backend);
    return medium == LiveMedium::text ? backend.typed : backend.spoken;
}

std::vector<Way> LiveConnectionChoice::waysFor(const Settings& settings, bool isBlockedHere)
{
    switch (settings.transport) {
    case LiveTransport::webRTC:
        return {Way::peer};
    case LiveTransport::webSocket:
        return {Way::socket};
    case LiveTransport::automatic:
        if (LiveBackendTraits::of(settings.backend).transport == LiveTransport::webSocket || isBlockedHere)
            return {Way::socket};
        return {Way::peer, Way::socket};
    }
    return {Way::socket};
}

std::unique_ptr<LiveConnection> LiveConnectionChoice::make(LiveConnectionObserver& observer, LiveMedium medium)
{
    switch (protocolFor(m_settings, medium)) {
    case LiveProtocol::gemini:
        return std::make_unique<LiveClient>(m_source, m_settings.models, observer, m_experience, m_settings.limits);
    case LiveProtocol::responses:
        return std::make_unique<ResponsesTextConnection>(
            m_source, m_settings.models, observer, m_experience, m_settings.limits);
    case LiveProtocol::openAI:
        return std::make_unique<OpenAILiveClient>(
            m_source, m_settings.models, observer, m_experience, m_settings.limits, route());
    }
    return nullptr;
}

OpenAIRoute LiveConnectionChoice::route()
{
    const std::string network = m_networks.current ? m_networks.current() : std::string();
    const bool isBlocked = m_networks.now && m_networks.blocked.isBlocked(network, m_networks.now());
    OpenAIRoute route;
    route.ways = waysFor(m_settings, isBlocked);
    route.worked = [this, network](Way way) { note(network, way, false); };
    route.wasBlocked = [this, network](Way way) { note(network, way, true); };
    return route;
}

/// Only what media did says something about the network; without a way out there is nothing to remember.
void LiveConnectionChoice::note(const std::string& network, Way way, bool isBlocked)
{
    if (way != Way::peer || network.empty() || !m_networks.now)
        return;
    if (isBlocked)
        m_networks.blocked.noteBlocked(network, m_networks.now());
    else if (!m_networks.blocked.forget(network))
        return;
    if (m_networks.changed)
        m_networks.changed(m_networks.blocked);
}

} // namespace quorvell
