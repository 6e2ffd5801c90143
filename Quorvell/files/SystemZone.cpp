// SPDX-License-Identifier: MIT
#include "Quorvell/files/SystemZone.h"

#include "Quorvell/files/Folder.h"

#include <algorithm>

namespace quorvell {

namespace {

/// Names come from calendars of other people too: none may lead out of the database.
bool isZoneName(std::string_view name)
{
    const auto belongsToName = [](char letter) {
        return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z') || (letter >= '0' && letter <= '9')
            || letter == '/' || letter == '_' || letter == '-' || letter == '+';
    };
    return !name.empty() && name.front() != '/' && std::all_of(name.begin(), name.end(), belongsToName);
}

} // namespace

std::string systemZoneFile(std::string_view zone)
{
    constexpr std::size_t maximumBytes = 64 * 1024;
    if (!isZoneName(zone))
        return {};
    return readFile("/usr/share/zoneinfo/" + std::string(zone), maximumBytes).value_or("");
}

} // namespace quorvell
