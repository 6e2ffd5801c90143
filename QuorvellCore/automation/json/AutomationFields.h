// SPDX-License-Identifier: MIT
// The fields of each record of automation, in their order: the one table that JSON, both ways, and hashes go by.
#pragma once

#include "QuorvellCore/automation/decisions/AutomationDecision.h"
#include "QuorvellCore/automation/decisions/DecisionContext.h"
#include "QuorvellCore/text/MaybeConst.h"

#include <concepts>

namespace quorvell {

template <MaybeConst<AutomationCandidate> Record, typename Visitor>
void visitFields(Record& candidate, Visitor& visitor)
{
    visitor.field("id", candidate.id);
    visitor.field("role", candidate.role);
    visitor.field("label", candidate.label);
    visitor.field("value", candidate.value);
    visitor.field("enabled", candidate.enabled);
    visitor.field("focused", candidate.focused);
    visitor.field("secure", candidate.secure);
}

template <MaybeConst<AutomationObservation> Record, typename Visitor>
void visitFields(Record& observation, Visitor& visitor)
{
    visitor.field("revision", observation.revision);
    visitor.field("app", observation.app);
    visitor.field("window", observation.window);
    visitor.field("page", observation.page);
    visitor.field("candidates", observation.candidates);
}

template <MaybeConst<AutomationAction> Record, typename Visitor> void visitFields(Record& action, Visitor& visitor)
{
    visitor.field("tool", action.tool);
    visitor.field("target", action.target);
    visitor.field("text", action.text);
    visitor.field("key", action.key);
    visitor.field("path", action.path);
    visitor.field("name", action.name);
    visitor.field("address", action.address);
    visitor.field("direction", action.direction);
}

template <MaybeConst<Postcondition> Record, typename Visitor> void visitFields(Record& condition, Visitor& visitor)
{
    visitor.field("kind", condition.kind);
    visitor.field("value", condition.value);
}

template <MaybeConst<AutomationDecision> Record, typename Visitor> void visitFields(Record& decision, Visitor& visitor)
{
    visitor.field("kind", decision.kind);
    visitor.field("message", decision.message);
    visitor.field("action", decision.action);
    visitor.field("expected", decision.expected);
}

template <MaybeConst<AutomationHistory> Record, typename Visitor> void visitFields(Record& step, Visitor& visitor)
{
    visitor.field("operation", step.operation);
    visitor.field("target", step.target);
    visitor.field("verified", step.verified);
}

template <MaybeConst<DecisionContext> Record, typename Visitor> void visitFields(Record& context, Visitor& visitor)
{
    visitor.field("goal", context.goal);
    visitor.field("observation", context.observation);
    visitor.field("history", context.history);
    visitor.field("image", context.image);
}

template <typename Type>
concept AutomationRecord =
    std::same_as<Type, AutomationCandidate> || std::same_as<Type, AutomationObservation> || std::same_as<Type,
        AutomationAction> || std::same_as<Type, Postcondition> || std::same_as<Type,
        AutomationDecision> || std::same_as<Type, AutomationHistory> || std::same_as<Type, DecisionContext>;

} // namespace quorvell
