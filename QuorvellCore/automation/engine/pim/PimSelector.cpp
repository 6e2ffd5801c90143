// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/engine/pim/PimSelector.h"

#include "QuorvellCore/automation/engine/context/TellableContext.h"
#include "QuorvellCore/automation/engine/pim/PimChoice.h"
#include "QuorvellCore/automation/json/AutomationJson.h"
#include "QuorvellCore/safety/SafetyGuard.h"

#include <algorithm>
#include <unordered_set>

namespace quorvell {

namespace {

/// Stands among the ids of elements; an element of this id cannot be chosen.
constexpr std::string_view noTarget = "none";

std::vector<std::string> offeredIDs(const AutomationObservation& observation)
{
    std::unordered_set<std::string_view> known = {noTarget};
    std::vector<std::string> ids;
    const std::size_t count = std::min(PimSelector::mostCandidates, observation.candidates.size());
    for (std::size_t index = 0; index < count; ++index) {
        const std::string& id = observation.candidates[index].id;
        if (known.insert(id).second)
            ids.push_back(id);
    }
    ids.emplace_back(noTarget);
    return ids;
}

Json targetCriteria(const AutomationObservation& observation)
{
    // Filled as a list: an object looks for each new key among all that it has.
    Json::object_t criteria;
    std::unordered_set<std::string_view> known = {noTarget};
    for (const AutomationCandidate& candidate : observation.candidates) {
        if (criteria.size() < PimSelector::mostCandidates && known.insert(candidate.id).second)
            criteria.push_back(
                {candidate.id, Json{{"role", candidate.role}, {"label", candidate.label}, {"value", candidate.value}}});
    }
    criteria.push_back({std::string(noTarget), "No appropriate visible target; use planner"});
    return criteria;
}

AutomationDecision scrollDecision(const std::string& direction)
{
    AutomationAction scroll{.tool = AutomationAction::Tool::scroll, .direction = direction};
    return {AutomationDecision::Kind::action, "I'll look further " + direction + ".", std::move(scroll), std::nullopt};
}

/// Of the chosen element; nothing where it must not be pressed or cannot be.
std::optional<AutomationDecision> clickDecision(const std::string& id, const AutomationObservation& observation)
{
    const AutomationCandidate* element = id == noTarget ? nullptr : observation.usableTarget(id);
    if (!element || !SafetyGuard::risk(element->label, element->role, observation.app).isSafe())
        return std::nullopt;
    AutomationAction click{.tool = AutomationAction::Tool::click, .target = id};
    return AutomationDecision{AutomationDecision::Kind::action, "I'll open " + element->label + ".", std::move(click),
        Postcondition{Postcondition::Kind::changed, ""}};
}

bool isSure(const PimSelection& selection, const PimThresholds& thresholds)
{
    return selection.confidence >= thresholds.confidence && selection.probability >= thresholds.probability;
}

} // namespace

std::optional<AutomationDecision> PimSelector::select(const DecisionContext& context, std::stop_token stop) const
{
    const PimService service{host, apiKey, http, breaker};
    if (!service.isSetUp())
        return std::nullopt;
    const DecisionContext told = tellableContext(context, mostCandidates);
    std::optional<Reading> reading;
    const auto reply =
        service.ask(state(told), questions(told.observation), timeout, std::move(stop), [&](const Json& answer) {
            const Json* answers = memberOf(answer, "answers");
            reading = answers ? read(*answers, context.observation) : std::nullopt;
            return reading.has_value();
        });
    if (!reply || !reading)
        return std::nullopt;
    if (const auto usage = PimUsage::read(*reply); usage && onTelemetry)
        onTelemetry(*usage);
    return reading->decision;
}

Json PimSelector::state(const DecisionContext& tellable)
{
    return AutomationJson::encode(tellable);
}

Json PimSelector::questions(const AutomationObservation& observation) const
{
    const Json operations = {{"click", "Click an observed control"}, {"up", "Scroll up"}, {"down", "Scroll down"},
        {"plan", "Need planning, text entry, clarification or completion verification"}};
    const Json sensitive = {{"type", "noul"},
        {"instructions",
            "Could the next action send, delete, pay, install, authorize, submit, expose private information, or have "
            "another consequential effect?"}};
    return {{"operation", pimChoiceQuestion(operationInstructions, operations)},
        {"target", pimChoiceQuestion(targetInstructions, targetCriteria(observation))}, {"sensitive", sensitive}};
}

std::optional<PimSelector::Reading> PimSelector::read(
    const Json& answers, const AutomationObservation& observation) const
{
    const Json* operation = memberOf(answers, "operation");
    auto step = operation ? PimChoice::choice(*operation, {"click", "up", "down", "plan"}) : std::nullopt;
    const Json* sensitive = memberOf(answers, "sensitive");
    const auto sensitivity = sensitive ? PimChoice::reading(*sensitive, "noul") : std::nullopt;
    if (!step || !sensitivity)
        return std::nullopt;
    Reading reading{std::nullopt, *step};
    reading.selection.sensitivity = sensitivity;
    if (*sensitivity >= thresholds.sensitivity || step->decision == "plan")
        return reading;
    if (step->decision == "click") {
        const Json* target = memberOf(answers, "target");
        const auto element = target ? PimChoice::choice(*target, offeredIDs(observation)) : std::nullopt;
        if (!element)
            return std::nullopt;
        reading.selection.confidence = std::min(step->confidence, element->confidence);
        reading.selection.probability = std::min(step->probability, element->probability);
        reading.decision = clickDecision(element->decision, observation);
    } else {
        reading.decision = scrollDecision(step->decision);
    }
    if (!isSure(reading.selection, thresholds))
        reading.decision.reset();
    return reading;
}

} // namespace quorvell
