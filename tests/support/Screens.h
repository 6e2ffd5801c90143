// SPDX-License-Identifier: MIT
// Small screens for tests, and what the classifier of steps answers about them.
#pragma once

#include "QuorvellCore/automation/decisions/DecisionContext.h"
#include "QuorvellCore/text/Json.h"

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace quorvell::test {

/// One element, enabled: its id is its label.
inline AutomationCandidate element(std::string role, std::string label, std::string value = "")
{
    return {.id = label, .role = std::move(role), .label = label, .value = std::move(value), .enabled = true};
}

inline AutomationObservation screenWith(std::vector<AutomationCandidate> candidates, std::string app = "Shop",
    std::optional<std::string> page = "https://www.example.com/list")
{
    return {.revision = 1,
        .app = std::move(app),
        .window = "List",
        .page = std::move(page),
        .candidates = std::move(candidates)};
}

/// A good answer: the chosen option has `probability`, the others share the rest.
inline Json choiceAnswer(
    const std::string& choice, const std::vector<std::string>& options, double confidence = 1, double probability = 1)
{
    Json probabilities = Json::object();
    for (const std::string& option : options)
        probabilities[option] = (1 - probability) / static_cast<double>(options.size() - 1);
    probabilities[choice] = probability;
    return {{"choice", choice}, {"confidence", confidence}, {"probabilities", std::move(probabilities)}};
}

inline Json stepReply(const Json& operation, const Json& target, double sensitivity = 0)
{
    const Json answers = {{"operation", operation}, {"target", target}, {"sensitive", {{"noul", sensitivity}}}};
    return {{"answers", answers}, {"usage", {{"input_tokens", 900}, {"output_tokens", 3}}}};
}

inline const std::vector<std::string> stepOptions = {"click", "up", "down", "plan"};

} // namespace quorvell::test
