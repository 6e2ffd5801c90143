// SPDX-License-Identifier: MIT
// Which option of a session the service would not accept.
#pragma once

#include <string_view>

namespace quorvell {

enum class RefusedSetting { serviceTier, summary, none };

/// As the event log has it, in the service's own words: "service_tier", "summary", "none".
constexpr std::string_view nameOf(RefusedSetting setting)
{
    switch (setting) {
    case RefusedSetting::serviceTier:
        return "service_tier";
    case RefusedSetting::summary:
        return "summary";
    case RefusedSetting::none:
        break;
    }
    return "none";
}

} // namespace quorvell
