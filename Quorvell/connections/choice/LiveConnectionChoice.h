// SPDX-License-Identifier: MIT
// Which connection holds a conversation: by backend, by what it carries, by transport and network.
#pragma once

#include "Quorvell/connections/access/LiveAccessSource.h"
#include "Quorvell/connections/choice/BlockedNetworks.h"
#include "Quorvell/connections/life/LiveTimeLimits.h"
#include "Quorvell/connections/life/ServiceExperience.h"
#include "Quorvell/connections/openai/OpenAIRoute.h"
#include "Quorvell/preferences/LiveBackend.h"
#include "Quorvell/preferences/LiveModelSettings.h"
#include "Quorvell/preferences/LiveProtocol.h"
#include "Quorvell/preferences/LiveTransport.h"
#include "Quorvell/session/ports/LiveConnection.h"
#include "Quorvell/session/ports/LiveConnectionObserver.h"
#include "Quorvell/session/ports/LiveMedium.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace quorvell {

/// Makes the connections of a program, as many as it wants at a time. Outlives them. Main thread.
class LiveConnectionChoice {
public:
    struct Settings {
        LiveBackend backend = LiveBackend::openAI; ///< Decided: never automatic.
        LiveTransport transport = LiveTransport::automatic;
        LiveModelSettings models{};
        LiveTimeLimits limits{};
    };

    /// What this program knows about networks, and who keeps it.
    struct Networks {
        BlockedNetworks blocked{};
        std::function<std::string()> current{}; ///< An opaque key; NetworkFingerprint::current does.
        std::function<Instant()> now{};
        std::function<void(const BlockedNetworks& blocked)> changed{}; ///< To be kept for the next start.
    };

    LiveConnectionChoice(LiveAccessSource& source, Settings settings, Networks networks);

    std::unique_ptr<LiveConnection> make(LiveConnectionObserver& observer, LiveMedium medium);

    static LiveProtocol protocolFor(const Settings& settings, LiveMedium medium);
    static std::vector<OpenAIRoute::Way> waysFor(const Settings& settings, bool isBlockedHere);

private:
    OpenAIRoute route();
    void note(const std::string& network, OpenAIRoute::Way way, bool isBlocked);

    LiveAccessSource& m_source;
    Settings m_settings;
    Networks m_networks;
    ServiceExperience m_experience;
};

} // namespace quorvell
