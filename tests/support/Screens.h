// SPDX-License-Identifier: MIT
// Small screens for tests, what the classifier of steps answers about them, and rows of fixtures that speak of both.
#pragma once

#include "FixtureTable.h"
#include "QuorvellCore/automation/json/AutomationJson.h"

#include <nlohmann/json.hpp>

namespace quorvell::test {

/// One element, enabled: its id is its label.
inline AutomationCandidate element(std::string role, std::string label, std::string value = "")
{
    return {.id = label, .role = std::move(role), .label = label, .value = std::move(value), .enabled = true};
}

inline AutomationObservation screenWith(std::vector<AutomationCandidate> candidates)
{
    return {.revision = 1,
        .app = "Shop",
        .window = "List",
        .page = "https://www.example.com/list",
        .candidates = std::move(candidates)};
}

inline const Postcondition changed{Postcondition::Kind::changed, ""};
inline const std::vector<std::string> stepOptions = {"click", "up", "down", "plan"};

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

/// A step that the service is sure of.
inline Json sureReply(const std::string& operation, const Json& target = Json())
{
    return stepReply(choiceAnswer(operation, stepOptions), target);
}

/// What stands between " | ".
inline std::vector<std::string> cells(const std::string& line)
{
    std::vector<std::string> cells(1);
    for (std::size_t at = 0; at < line.size(); ++at) {
        if (line.compare(at, 3, " | ") == 0) {
            cells.emplace_back();
            at += 2;
        } else {
            cells.back() += line[at];
        }
    }
    return cells;
}

template <typename Record> Record recordOf(const std::string& json)
{
    const auto record = AutomationJson::decode<Record>(parseJson(json).value_or(Json()));
    EXPECT_TRUE(record) << json;
    return record.value_or(Record{});
}

/// The text of tests/fixtures/automation/<name> without its last line break.
inline std::string automationFixture(const std::string& name)
{
    std::ifstream file(QUORVELL_FIXTURES "/automation/" + name);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    EXPECT_TRUE(text.ends_with('\n')) << name;
    return text.substr(0, text.size() - 1);
}

} // namespace quorvell::test
