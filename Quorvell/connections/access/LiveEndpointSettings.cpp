// SPDX-License-Identifier: MIT
#include "Quorvell/connections/access/LiveEndpointSettings.h"

#include "Quorvell/preferences/LiveBackendTraits.h"
#include "QuorvellCore/text/Characters.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

/// What may stand in a header: anything else could begin another one.
bool isPrintable(const std::string& key)
{
    return !key.empty()
        && std::all_of(key.begin(), key.end(), [](char letter) { return letter > ' ' && letter <= '~'; });
}

LiveBackend decided(const LiveEndpointSettings& settings)
{
    if (settings.backend != LiveBackend::automatic)
        return settings.backend;
    if (settings.host)
        return LiveBackend::openAI;
    const auto backends = LiveBackendTraits::all();
    const auto first = std::ranges::find_if(
        backends, [&](const LiveBackendTraits& traits) { return settings.keys.contains(traits.backend); });
    return first != backends.end() ? first->backend : LiveBackend::onDevice;
}

} // namespace

std::optional<std::string> LiveEndpointSettings::hostProblem(const std::string& host)
{
    if (OpenAILiveEndpoint::create(host))
        return std::nullopt;
    return "\"" + host
        + "\" is not an address of a live service. Give a host such as live.example.org or live.example.org:8443, or "
          "an address that begins with wss://; without encryption (ws://) only this computer, as in "
          "ws://127.0.0.1:8080.";
}

LiveEndpointSettings::Choice LiveEndpointSettings::choose() const
{
    const LiveBackendTraits& chosen = LiveBackendTraits::of(decided(*this));
    if (!chosen.isHosted())
        return {chosen.backend};
    const auto fails = [&](std::string problem) { return Choice{chosen.backend, std::nullopt, std::move(problem)}; };
    const std::string address = host.value_or(std::string(chosen.host));
    const auto endpoint = OpenAILiveEndpoint::create(address);
    if (!endpoint)
        return fails(hostProblem(address).value_or(""));
    const auto given = keys.find(chosen.backend);
    const std::string keyName(chosen.keyVariable);
    if (given == keys.end())
        return fails("The live service at " + address + " needs a key. Set " + keyName
            + ", or choose the service on this device: leave the host out, and set the backend to on_device.");
    const std::string plainKey = trimmed(given->second);
    if (!isPrintable(plainKey))
        return fails(
            "The key in " + keyName + " holds characters that no key has, such as a line break. Set it again.");
    return {chosen.backend, LiveAccess{*endpoint, plainKey, LiveAccess::Place::hosted, chosen.keyVariable}, {}};
}

} // namespace quorvell
