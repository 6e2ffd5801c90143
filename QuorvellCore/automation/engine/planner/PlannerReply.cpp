// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/engine/planner/PlannerReply.h"

#include "QuorvellCore/automation/json/AutomationJson.h"
#include "QuorvellCore/safety/ElementRole.h"
#include "QuorvellCore/text/Characters.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

using PlannerText = std::variant<std::string, DecisionError>;

PlannerText cutOff()
{
    return DecisionError{DecisionError::Kind::malformed, 0, "The planner's answer was cut off."};
}

PlannerText declined()
{
    return DecisionError{DecisionError::Kind::rejected, 0, "The planner declined to decide."};
}

PlannerText failed()
{
    return DecisionError{DecisionError::Kind::rejected, 0, "The planner reported an error."};
}

PlannerText textFound(std::string text)
{
    if (text.size() > longestDecisionText)
        return DecisionError{DecisionError::Kind::tooLarge, 0, "The planner's answer is too long."};
    if (trimmed(text).empty())
        return DecisionError{DecisionError::Kind::malformed, 0, "The planner's answer holds no decision."};
    return text;
}

const Json& member(const Json& value, std::string_view key)
{
    static const Json none;
    const Json* found = memberOf(value, key);
    return found ? *found : none;
}

std::string typeOf(const Json& value)
{
    return readString(value, "type").value_or("");
}

/// The texts of those parts of a list that are of this type.
std::string textsOf(const Json& parts, std::string_view type)
{
    std::string text;
    if (!parts.is_array())
        return text;
    for (const Json& part : parts) {
        if (typeOf(part) == type)
            text += readString(part, "text").value_or("");
    }
    return text;
}

bool holdsType(const Json& parts, std::string_view type)
{
    return parts.is_array()
        && std::any_of(parts.begin(), parts.end(), [&](const Json& part) { return typeOf(part) == type; });
}

PlannerText responsesText(const Json& reply)
{
    if (!member(reply, "error").is_null() || readString(reply, "status") == "failed")
        return failed();
    if (readString(reply, "status") == "incomplete")
        return cutOff();
    std::string text;
    const Json& output = member(reply, "output");
    if (!output.is_array())
        return textFound({});
    for (const Json& item : output) {
        const Json& content = member(item, "content");
        if (typeOf(item) != "message")
            continue;
        if (holdsType(content, "refusal"))
            return declined();
        text += textsOf(content, "output_text");
    }
    return textFound(std::move(text));
}

PlannerText messagesText(const Json& reply)
{
    const std::string reason = readString(reply, "stop_reason").value_or("");
    if (typeOf(reply) == "error")
        return failed();
    if (reason == "max_tokens")
        return cutOff();
    if (reason == "refusal")
        return declined();
    const Json& content = member(reply, "content");
    if (!content.is_array())
        return textFound({});
    const auto isCall = [](const Json& part) { return typeOf(part) == "tool_use"; };
    if (const auto call = std::find_if(content.begin(), content.end(), isCall); call != content.end())
        return textFound(dumpJson(member(*call, "input")));
    return textFound(textsOf(content, "text"));
}

PlannerText chatText(const Json& reply)
{
    const Json& choices = member(reply, "choices");
    if (!member(reply, "error").is_null())
        return failed();
    if (!choices.is_array() || choices.empty())
        return textFound({});
    const Json& choice = choices.front();
    const Json& message = member(choice, "message");
    const std::string reason = readString(choice, "finish_reason").value_or("");
    if (reason == "length")
        return cutOff();
    if (reason == "content_filter" || !member(message, "refusal").is_null())
        return declined();
    const Json& content = member(message, "content");
    return textFound(content.is_array() ? textsOf(content, "text") : readString(content).value_or(""));
}

std::string nameOfKind(const Json& decision)
{
    return readString(decision, "kind").value_or("");
}

DecisionProblem problemOf(const Json& object)
{
    if (!decisionKind(nameOfKind(object)))
        return {"Its \"kind\" is none of action, finished, clarify and vision."};
    const Json& action = member(object, "action");
    if (nameOfKind(object) == "action" && !action.is_object())
        return {"Its kind is action, but \"action\" is not given."};
    if (action.is_object() && !automationTool(readString(action, "tool").value_or("")))
        return {"Its \"tool\" is none of those that there are."};
    return {"A member is missing, has another type than the schema says or an unknown name."};
}

std::optional<DecisionProblem> targetProblem(const std::string& id, const AutomationObservation& observation)
{
    const auto count = std::count_if(observation.candidates.begin(), observation.candidates.end(),
        [&](const AutomationCandidate& candidate) { return candidate.id == id; });
    if (count == 0)
        return DecisionProblem{"Its \"target\" is the id of no element on the screen."};
    if (count > 1)
        return DecisionProblem{"Its \"target\" is the id of more than one element."};
    if (!observation.usableTarget(id))
        return DecisionProblem{"Its \"target\" is disabled or secure, so it cannot be acted on."};
    return std::nullopt;
}

} // namespace

std::variant<std::string, DecisionError> readPlannerReply(PlannerStyle style, const Json& reply)
{
    switch (style) {
    case PlannerStyle::responses:
        return responsesText(reply);
    case PlannerStyle::messages:
        return messagesText(reply);
    case PlannerStyle::chatCompletions:
        return chatText(reply);
    }
    return failed();
}

std::variant<AutomationDecision, DecisionProblem> readDecision(std::string_view text)
{
    const auto json = parseJson(text, {.maximumBytes = longestDecisionText, .maximumDepth = 8, .maximumMembers = 64});
    if (!json || !json->is_object())
        return DecisionProblem{"It is not one JSON object."};
    auto decision = AutomationJson::decode<AutomationDecision>(*json);
    if (!decision)
        return problemOf(*json);
    if (decision->kind != AutomationDecision::Kind::action) {
        decision->action.reset();
        decision->expected.reset();
    }
    const bool isSaid =
        decision->kind == AutomationDecision::Kind::finished || decision->kind == AutomationDecision::Kind::clarify;
    if (isSaid && trimmed(decision->message).empty())
        return DecisionProblem{"Its \"message\" is empty."};
    return std::move(*decision);
}

std::optional<DecisionProblem> decisionProblem(
    const AutomationDecision& decision, const AutomationObservation& observation)
{
    if (decision.kind != AutomationDecision::Kind::action || !decision.action)
        return std::nullopt;
    const AutomationAction& action = *decision.action;
    if (action.isValid(observation))
        return std::nullopt;
    if (action.target) {
        if (auto problem = targetProblem(*action.target, observation))
            return problem;
        const AutomationCandidate* element = observation.usableTarget(*action.target);
        if (action.tool == AutomationAction::Tool::typeText && !ElementRole::isTextEntry(element->role))
            return DecisionProblem{"Its \"target\" takes no text."};
    }
    return DecisionProblem{"What the tool " + std::string(storedText(action.tool))
        + " needs is missing, too long or none of what is allowed."};
}

} // namespace quorvell
