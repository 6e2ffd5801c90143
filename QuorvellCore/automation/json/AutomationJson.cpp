// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/json/AutomationJson.h"

#include "QuorvellCore/automation/screen/ObservationBounds.h"
#include "QuorvellCore/text/Base64.h"
#include "QuorvellCore/text/RecordJson.h"

#include <utility>

namespace quorvell {

namespace {

struct AutomationForm {
    std::vector<std::string>& problems;

    static std::string text(const Bytes& value) { return base64Encode(value); }
    template <typename Kind>
    requires std::is_enum_v<Kind>
    static std::string_view text(Kind value) { return storedText(value); }

    static std::optional<Bytes> value(std::string_view text, const Bytes&) { return base64Decode(text); }
    static std::optional<AutomationAction::Tool> value(std::string_view text, AutomationAction::Tool)
    {
        return automationTool(text);
    }
    static std::optional<Postcondition::Kind> value(std::string_view text, Postcondition::Kind)
    {
        return postconditionKind(text);
    }
    static std::optional<AutomationDecision::Kind> value(std::string_view text, AutomationDecision::Kind)
    {
        return decisionKind(text);
    }

    bool settle(AutomationObservation& observation) const
    {
        for (std::string& problem : ObservationBounds::keep(observation))
            problems.push_back(std::move(problem));
        return true;
    }
    /// Not cut: half of what is expected holds more easily than all of it.
    bool settle(Postcondition& condition) const { return condition.value.size() <= Postcondition::longestValue; }
    bool settle(AutomationDecision& decision) const
    {
        if (ObservationBounds::cut(decision.message, AutomationDecision::longestMessage))
            problems.emplace_back("The message was too long and was cut off.");
        return decision.kind != AutomationDecision::Kind::action || decision.action;
    }
    bool settle(AutomationHistory& step) const
    {
        ObservationBounds::cut(step.operation, ObservationBounds::longestTitle);
        ObservationBounds::cut(step.target, ObservationBounds::longestTitle);
        return true;
    }
    bool settle(DecisionContext& context) const
    {
        if (ObservationBounds::cut(context.goal, DecisionContext::longestGoal))
            problems.emplace_back("The goal was too long and was cut off.");
        if (auto& steps = context.history; steps.size() > DecisionContext::mostHistory) {
            steps.erase(steps.begin(), steps.end() - static_cast<std::ptrdiff_t>(DecisionContext::mostHistory));
            problems.emplace_back("The oldest steps were left out.");
        }
        return true;
    }
};

} // namespace

template <AutomationRecord Record> Json AutomationJson::encode(const Record& record)
{
    return RecordWriter<AutomationForm>::object(record);
}

template <AutomationRecord Record>
std::optional<Record> AutomationJson::decode(const Json& object, std::vector<std::string>& problems)
{
    return RecordReader<AutomationForm>::record<Record>(object, {problems});
}

template Json AutomationJson::encode(const AutomationCandidate&);
template Json AutomationJson::encode(const AutomationObservation&);
template Json AutomationJson::encode(const AutomationAction&);
template Json AutomationJson::encode(const Postcondition&);
template Json AutomationJson::encode(const AutomationDecision&);
template Json AutomationJson::encode(const AutomationHistory&);
template Json AutomationJson::encode(const DecisionContext&);
template std::optional<AutomationCandidate> AutomationJson::decode(const Json&, std::vector<std::string>&);
template std::optional<AutomationObservation> AutomationJson::decode(const Json&, std::vector<std::string>&);
template std::optional<AutomationAction> AutomationJson::decode(const Json&, std::vector<std::string>&);
template std::optional<Postcondition> AutomationJson::decode(const Json&, std::vector<std::string>&);
template std::optional<AutomationDecision> AutomationJson::decode(const Json&, std::vector<std::string>&);
template std::optional<AutomationHistory> AutomationJson::decode(const Json&, std::vector<std::string>&);
template std::optional<DecisionContext> AutomationJson::decode(const Json&, std::vector<std::string>&);

} // namespace quorvell
