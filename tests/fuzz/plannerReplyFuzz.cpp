// SPDX-License-Identifier: MIT
// Whatever a planning model answers is no decision, or one that survives being written and read again; of one that
// cannot be carried out, why. What a screen says stays behind its fence.
#include "QuorvellCore/automation/engine/planner/PlannerPrompt.h"
#include "QuorvellCore/automation/engine/planner/PlannerReply.h"
#include "QuorvellCore/automation/json/AutomationJson.h"
#include "fuzzing.h"

#include <nlohmann/json.hpp>

namespace {

using namespace quorvell;

constexpr std::string_view fenceMark = "mark7";

void readAsDecision(std::string_view text)
{
    const auto read = readDecision(text);
    if (const auto* problem = std::get_if<DecisionProblem>(&read)) {
        require(!problem->text.empty());
        return;
    }
    const auto& decision = std::get<AutomationDecision>(read);
    require(AutomationJson::decode<AutomationDecision>(AutomationJson::encode(decision)) == decision);
    require((decision.kind == AutomationDecision::Kind::action) == decision.action.has_value());
    const AutomationObservation screen{
        .candidates = {{.id = "e1", .role = "AXTextField", .label = "Find", .enabled = true}}};
    require(!decision.action || decision.action->isValid(screen) != decisionProblem(decision, screen).has_value());
}

void fence(std::string_view text)
{
    DecisionContext context{"a goal", {.app = std::string(text), .page = std::string(text)}, {}, {}};
    context.observation.candidates.push_back({.id = "e1", .role = "AXTextArea", .label = std::string(text)});
    context.history.push_back({"click", std::string(text), false});
    const std::string told = PlannerPrompt::situation(context, fenceMark);
    std::size_t marks = 0;
    for (auto at = told.find(fenceMark); at != std::string::npos; at = told.find(fenceMark, at + 1))
        ++marks;
    require(marks == 3); // where it is named, where the fence begins and where it ends
}

} // namespace

void quorvell::search(std::string_view text)
{
    readAsDecision(text);
    fence(text);
    const auto json = parseJson(text);
    if (!json)
        return;
    for (const PlannerStyle style : allPlannerStyles) {
        const auto reply = readPlannerReply(style, *json);
        if (const auto* decision = std::get_if<std::string>(&reply))
            readAsDecision(*decision);
    }
}
