#include "Quorvell/session/HelpModeSwitch.h"

#include "Quorvell/session/SessionEvents.h"
#include "QuorvellCore/live/history/ModeIntent.h"

#include <algorithm>
#include <string>

namespace quorvell {

namespace {

constexpr const char* useName = "set_mode";

std::optional<HelpMode> modeNamed(std::string_view name)
{
    for (const HelpMode mode : {HelpMode::guide, HelpMode::auto_, HelpMode::do_})
        if (SessionEvents::nameOf(mode) == name)
            return mode;
    return std::nullopt;
}

std::string refusal(HelpMode current)
{
    if (current == HelpMode::auto_)
        return "They haven't asked to switch. Stay in Auto; only they change it.";
    return "They haven't asked to switch. Stay in " + std::string(SessionEvents::nameOf(current))
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
    const auto mode = wanted ? modeNamed(*wanted) : std::nullopt;
    if (!mode)
        return {std::nullopt, {{"error", "mode must be one of guide, auto and do."}}};
    if (!useUpRequest(*mode, requests))
        return {std::nullopt, {{"status", "refused"}, {"message", refusal(current)}}};
    return {mode, {{"status", "switched"}, {"mode", std::string(SessionEvents::nameOf(*mode))}}};
}

} // namespace quorvell
