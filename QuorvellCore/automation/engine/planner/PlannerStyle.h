// SPDX-License-Identifier: MIT
// The forms of request in which planning models are asked.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quorvell {

enum class PlannerStyle {
    responses, ///< OpenAI's Responses.
    messages, ///< Anthropic's Messages.
    chatCompletions, ///< Chat completions, as OpenRouter and many others take them.
};

inline constexpr std::array<PlannerStyle, 3> allPlannerStyles = {
    PlannerStyle::responses, PlannerStyle::messages, PlannerStyle::chatCompletions};

/// The name of the enumerator.
std::string_view storedText(PlannerStyle style);

/// Behind the host: "/v1/responses", "/v1/messages", "/v1/chat/completions".
std::string_view plannerPath(PlannerStyle style);
/// With the key and, where the form has one, its version.
std::vector<std::pair<std::string, std::string>> plannerHeaders(PlannerStyle style, const std::string& key);

} // namespace quorvell
