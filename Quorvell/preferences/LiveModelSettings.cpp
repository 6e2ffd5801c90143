// SPDX-License-Identifier: MIT
#include "Quorvell/preferences/LiveModelSettings.h"

#include "Quorvell/preferences/LiveBackendTraits.h"

namespace quorvell {

LiveModelSettings LiveModelSettings::usual(LiveBackend backend)
{
    const LiveBackendTraits& traits = LiveBackendTraits::of(backend);
    return {std::string(traits.voiceModel.usual), std::string(traits.voice.usual),
        std::string(traits.backendModel.usual), {}};
}

} // namespace quorvell
