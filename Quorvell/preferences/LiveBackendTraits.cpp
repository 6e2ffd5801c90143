// SPDX-License-Identifier: MIT
#include "Quorvell/preferences/LiveBackendTraits.h"

#include "QuorvellCore/live/wire/gemini/GeminiLiveEndpoint.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveEndpoint.h"

#include <algorithm>
#include <array>

namespace quorvell {

namespace {

// The service on this device takes what an OpenAI model is asked for: a voice by its name, and any model.
constexpr LiveBackendTraits::Choice voiceModel{"voice_model", "gpt-live"};
constexpr LiveBackendTraits::Choice voice{"voice", "marin"};
constexpr LiveBackendTraits::Choice backendModel{"backend_model", "gpt-5"};

constexpr auto table = std::to_array<LiveBackendTraits>({
    {.backend = LiveBackend::automatic, .name = "auto"},
    {.backend = LiveBackend::openAI,
        .name = "openai",
        .keyVariable = "OPENAI_API_KEY",
        .host = OpenAILiveEndpoint::defaultHost,
        .typed = LiveProtocol::responses, // A spoken session is paid for by the second; typing needs none.
        .transport = LiveTransport::webRTC,
        .voiceModel = voiceModel,
        .voice = voice,
        .backendModel = backendModel},
    {.backend = LiveBackend::gemini,
        .name = "gemini",
        .keyVariable = "GEMINI_API_KEY",
        .host = GeminiLiveEndpoint::defaultHost,
        .spoken = LiveProtocol::gemini,
        .typed = LiveProtocol::gemini,
        .voiceModel = {"gemini_model", "gemini-live-2.5-flash-preview"},
        .voice = {"gemini_voice", "Kore"}},
    {.backend = LiveBackend::onDevice,
        .name = "on_device",
        .voiceModel = voiceModel,
        .voice = voice,
        .backendModel = backendModel},
});

} // namespace

std::span<const LiveBackendTraits> LiveBackendTraits::all()
{
    return table;
}

const LiveBackendTraits& LiveBackendTraits::of(LiveBackend backend)
{
    const auto row = std::ranges::find(table, backend, &LiveBackendTraits::backend);
    return row != table.end() ? *row : table.front();
}

const std::map<std::string, LiveBackend>& LiveBackendTraits::byName()
{
    static const std::map<std::string, LiveBackend> names = [] {
        std::map<std::string, LiveBackend> made;
        for (const LiveBackendTraits& row : table)
            made.emplace(row.name, row.backend);
        return made;
    }();
    return names;
}

std::string LiveBackendTraits::names()
{
    std::string listed;
    for (const LiveBackendTraits& row : table)
        listed += (listed.empty() ? "" : &row == &table.back() ? " or " : ", ") + std::string(row.name);
    return listed;
}

} // namespace quorvell
