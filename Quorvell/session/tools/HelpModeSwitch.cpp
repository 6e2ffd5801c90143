// SPDX-License-Identifier: MIT
#include "Quorvell/session/tools/HelpModeSwitch.h"

#include "QuorvellCore/live/history/ModeIntent.h"

#include <algorithm>
#include <string>

namespace quorvell {

namespace {

constexpr const char* useName = "set_mode";

std::string refusal(HelpMode current)
{
    if (current == HelpMode::auto_)
        return "They haven't asked to switch. Stay in Auto; only they change it.";
    return "They haven't asked to switch. Stay in " + std::string(nameOf(current))
        + " mode; only they change it, with the switch on the island or by saying so.";
}

/// The newest word on it counts: who has since asked for another mode does not want this one any more.
bool useUpRequest(HelpMode wanted, RecentRequests& requests)
{
    for (auto request = requests.requests.rbegin(); request != requests.requests.rend(); ++request) {
        const auto asked = ModeIntent::requested(request->text);
        if (asked)
            return asked == wanted && request->used.insert(useName).second;
    }
    return false;
}

} // namespace

HelpModeSwitch HelpModeSwitch::judge(std::optional<std::string_view> wanted, HelpMode current, RecentRequests& requests)
{
    const auto mode = wanted ? helpModeNamed(*wanted) : std::nullopt;
    if (!mode)
        return {std::nullopt, ToolResult::failed("mode must be one of guide, auto and do.")};
    if (!useUpRequest(*mode, requests))
        return {std::nullopt, ToolResult(ToolStatus::refused).advise(refusal(current))};
    return {mode, ToolResult(ToolStatus::switched).add("mode", std::string(nameOf(*mode)))};
}

} // namespace quorvell
