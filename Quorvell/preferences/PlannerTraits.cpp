// SPDX-License-Identifier: MIT
#include "Quorvell/preferences/PlannerTraits.h"

#include <algorithm>
#include <array>

namespace quorvell {

namespace {

constexpr auto planners = std::to_array<PlannerTraits>({
    {.service = PlannerService::automatic, .name = "automatic"},
    {.service = PlannerService::openAI,
        .name = "openai",
        .title = "OpenAI",
        .keyVariable = "OPENAI_API_KEY",
        .host = "api.openai.com",
        .model = "gpt-5",
        .style = PlannerStyle::responses},
    {.service = PlannerService::anthropic,
        .name = "anthropic",
        .title = "Anthropic",
        .keyVariable = "ANTHROPIC_API_KEY",
        .host = "api.anthropic.com",
        .model = "claude-sonnet-4-5",
        .style = PlannerStyle::messages},
    {.service = PlannerService::openRouter,
        .name = "openrouter",
        .title = "OpenRouter",
        .keyVariable = "OPENROUTER_API_KEY",
        .host = "openrouter.ai/api",
        .model = "openai/gpt-5",
        .style = PlannerStyle::chatCompletions},
    {.service = PlannerService::off, .name = "off"},
});

} // namespace

std::span<const PlannerTraits> PlannerTraits::all()
{
    return planners;
}

const PlannerTraits& PlannerTraits::of(PlannerService service)
{
    const auto row = std::ranges::find(planners, service, &PlannerTraits::service);
    return row != planners.end() ? *row : planners.back();
}

const std::map<std::string, PlannerService>& PlannerTraits::byName()
{
    static const std::map<std::string, PlannerService> names = [] {
        std::map<std::string, PlannerService> made;
        for (const PlannerTraits& row : planners)
            made.emplace(row.name, row.service);
        return made;
    }();
    return names;
}

} // namespace quorvell
