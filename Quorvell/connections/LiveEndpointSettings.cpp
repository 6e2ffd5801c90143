#include "Quorvell/connections/LiveEndpointSettings.h"

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
    if (!host && !key)
        return {std::nullopt, true, {}};
    const std::string address = host.value_or(std::string(OpenAILiveEndpoint::defaultHost));
    const auto endpoint = OpenAILiveEndpoint::create(address);
    if (!endpoint)
        return {std::nullopt, false, hostProblem(address).value_or("")};
    if (!key)
        return {std::nullopt, false,
            "The live service at " + address
                + " needs a key. Set OPENAI_API_KEY, or leave the host out to use the service on this device."};
    const std::string plainKey = trimmed(*key);
    if (!isPrintable(plainKey))
        return {std::nullopt, false,
            "The key in OPENAI_API_KEY holds characters that no key has, such as a line break. Set it again."};
    return {LiveAccess{*endpoint, plainKey, LiveAccess::Place::hosted}, false, {}};
}

} // namespace quorvell
