// SPDX-License-Identifier: MIT
#include "Quorvell/connections/choice/BlockedNetworks.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace quorvell {

namespace {

constexpr std::size_t longestName = 64;

} // namespace

bool BlockedNetworks::isBlocked(std::string_view network, Instant now) const
{
    // A time that lies ahead was noted by a clock that has been set back since: it counts for nothing.
    return std::any_of(entries.begin(), entries.end(), [&](const Entry& entry) {
        return entry.network == network && entry.since <= now && now - entry.since < triedAgainAfter;
    });
}

void BlockedNetworks::noteBlocked(std::string_view network, Instant now)
{
    forget(network);
    entries.push_back({std::string(network.substr(0, longestName)), now});
    if (entries.size() > most)
        entries.erase(entries.begin());
}

bool BlockedNetworks::forget(std::string_view network)
{
    return std::erase_if(entries, [&](const Entry& entry) { return entry.network == network; }) > 0;
}

Json BlockedNetworks::json() const
{
    Json result = Json::object();
    for (const Entry& entry : entries)
        result[entry.network] = entry.since.time_since_epoch().count();
    return result;
}

BlockedNetworks BlockedNetworks::fromJson(const Json& json)
{
    constexpr std::int64_t latest = 253'402'300'799'999; // The end of the year 9999.
    BlockedNetworks result;
    if (!json.is_object())
        return result;
    for (const auto& [network, since] : json.items()) {
        const auto time = readInteger(since);
        if (time && *time >= 0 && *time <= latest && network.size() <= longestName)
            result.noteBlocked(network, Instant(std::chrono::milliseconds(*time)));
    }
    return result;
}

} // namespace quorvell
