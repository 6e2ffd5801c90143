// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/decisions/AutomationDecision.h"

namespace quorvell {

std::string_view storedText(AutomationDecision::Kind kind)
{
    switch (kind) {
    case AutomationDecision::Kind::action:
        return "action";
    case AutomationDecision::Kind::finished:
        return "finished";
    case AutomationDecision::Kind::clarify:
        return "clarify";
    case AutomationDecision::Kind::vision:
        return "vision";
    }
    return "clarify";
}

std::optional<AutomationDecision::Kind> decisionKind(std::string_view stored)
{
    for (const AutomationDecision::Kind kind : allDecisionKinds) {
        if (storedText(kind) == stored)
            return kind;
    }
    return std::nullopt;
}

} // namespace quorvell
