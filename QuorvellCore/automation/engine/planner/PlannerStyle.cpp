// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/engine/planner/PlannerStyle.h"

namespace quorvell {

std::string_view storedText(PlannerStyle style)
{
    switch (style) {
    case PlannerStyle::responses:
        return "responses";
    case PlannerStyle::messages:
        return "messages";
    case PlannerStyle::chatCompletions:
        return "chatCompletions";
    }
    return "responses";
}

std::string_view plannerPath(PlannerStyle style)
{
    switch (style) {
    case PlannerStyle::responses:
        return "/v1/responses";
    case PlannerStyle::messages:
        return "/v1/messages";
    case PlannerStyle::chatCompletions:
        return "/v1/chat/completions";
    }
    return "/v1/responses";
}

std::vector<std::pair<std::string, std::string>> plannerHeaders(PlannerStyle style, const std::string& key)
{
    // The version is the only one that the form has had since.
    if (style == PlannerStyle::messages)
        return {{"x-api-key", key}, {"anthropic-version", "2023-06-01"}};
    return {{"Authorization", "Bearer " + key}};
}

} // namespace quorvell
