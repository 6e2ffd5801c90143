// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/wire/openai/OpenAIBackendFlow.h"

#include "QuorvellCore/live/wire/openai/OpenAILiveMessage.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <utility>

namespace quorvell {

namespace {

constexpr std::string_view createPrefix = "create_";

[[noreturn]] void endProcess(const char* reason)
{
    std::fprintf(stderr, "quorvell: %s\n", reason);
    std::abort();
}

} // namespace

void OpenAIBackendFlow::started(std::string_view responseID)
{
    createInFlight.reset();
    if (running.size() < mostRunning)
        running.emplace(responseID);
}

std::vector<Json> OpenAIBackendFlow::ended(std::string_view responseID)
{
    if (const auto place = running.find(responseID); place != running.end())
        running.erase(place);
    if (running.empty())
        createInFlight.reset();
    return flush();
}

void OpenAIBackendFlow::called(std::string_view callID)
{
    if (owed.size() < mostOwed)
        owed.emplace(callID);
}

std::vector<Json> OpenAIBackendFlow::output(std::string_view callID, Json message)
{
    const auto place = owed.find(callID);
    if (place == owed.end())
        return {};
    owed.erase(place);
    needsCreate = true;
    std::vector<Json> released = flush();
    released.insert(released.begin(), std::move(message));
    return released;
}

std::vector<Json> OpenAIBackendFlow::message(Queued message)
{
    queued.push_back(std::move(message));
    if (queued.size() > mostQueued)
        queued.erase(queued.begin());
    return flush();
}

std::vector<Json> OpenAIBackendFlow::flush()
{
    if (!running.empty() || !owed.empty() || createInFlight)
        return {};
    const bool isWanted =
        needsCreate || std::any_of(queued.begin(), queued.end(), [](const Queued& entry) { return entry.respond; });
    std::vector<Json> released;
    for (Queued& entry : std::exchange(queued, {}))
        released.push_back(std::move(entry.message));
    if (!isWanted)
        return released;
    if (creates == std::numeric_limits<std::int64_t>::max())
        endProcess("no number is left for another response.create; start the conversation again");
    needsCreate = false;
    createInFlight = std::string(createPrefix) + std::to_string(++creates);
    released.push_back(OpenAILiveMessage::responseCreate(createInFlight));
    return released;
}

std::vector<Json> OpenAIBackendFlow::rejected(const std::optional<std::string>& clientEventID)
{
    if (!clientEventID || !clientEventID->starts_with(createPrefix))
        return {};
    if (createInFlight == clientEventID)
        createInFlight.reset();
    needsCreate = true;
    return running.empty() ? flush() : std::vector<Json>{};
}

std::size_t OpenAIBackendFlow::dropStale()
{
    return std::erase_if(queued, [](const Queued& entry) { return entry.stale; });
}

bool OpenAIBackendFlow::isIdle() const
{
    return running.empty() && owed.empty() && !createInFlight && !needsCreate && queued.empty();
}

} // namespace quorvell
