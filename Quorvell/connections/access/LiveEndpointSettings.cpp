// SPDX-License-Identifier: MIT
#include "Quorvell/connections/access/LiveEndpointSettings.h"

#include "QuorvellCore/live/wire/gemini/GeminiLiveEndpoint.h"
#include "QuorvellCore/text/Characters.h"

#include <algorithm>

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
    if (settings.host || settings.key)
        return LiveBackend::openAI;
    return settings.geminiKey ? LiveBackend::gemini : LiveBackend::onDevice;
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
    const LiveBackend chosen = decided(*this);
    if (chosen == LiveBackend::onDevice)
        return {std::nullopt, true, {}};
    const bool isGemini = chosen == LiveBackend::gemini;
    const std::optional<std::string>& given = isGemini ? geminiKey : key;
    const std::string_view keyName = isGemini ? "GEMINI_API_KEY" : "OPENAI_API_KEY";
    const std::string address =
        host.value_or(std::string(isGemini ? GeminiLiveEndpoint::defaultHost : OpenAILiveEndpoint::defaultHost));
    const auto endpoint = OpenAILiveEndpoint::create(address);
    if (!endpoint)
        return {std::nullopt, false, hostProblem(address).value_or("")};
    if (!given)
        return {std::nullopt, false,
            "The live service at " + address + " needs a key. Set " + std::string(keyName)
                + ", or choose the service on this device: leave the host out, and set the "
                  "backend to on_device."};
    const std::string plainKey = trimmed(*given);
    if (!isPrintable(plainKey))
        return {std::nullopt, false,
            "The key in " + std::string(keyName)
                + " holds characters that no key has, such as a line break. Set it "
                  "again."};
    return {LiveAccess{*endpoint, plainKey, LiveAccess::Place::hosted, keyName}, false, {}, chosen};
}

} // namespace quorvell
