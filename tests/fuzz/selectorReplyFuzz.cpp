// SPDX-License-Identifier: MIT
// Whatever the classifier of steps answers, what is decided by it is a scroll, or a press that can be done and that the
// guard calls safe.
#include "QuorvellCore/automation/engine/pim/PimChoice.h"
#include "QuorvellCore/automation/engine/pim/PimNextStep.h"
#include "QuorvellCore/automation/engine/pim/PlainFarewell.h"
#include "QuorvellCore/safety/SafetyGuard.h"
#include "fuzzing.h"

#include <nlohmann/json.hpp>

namespace {

using namespace quorvell;

AutomationObservation offeredScreen()
{
    AutomationObservation screen{.revision = 1, .app = "Shop"};
    for (const char* label : {"More", "Delete", "Pay", "none", "More"})
        screen.candidates.push_back({.id = label, .role = "AXButton", .label = label, .enabled = true});
    screen.candidates.push_back({.id = "Next", .role = "AXButton", .label = "Next", .enabled = true});
    screen.candidates.push_back({.id = "Dim", .role = "AXButton", .label = "Dim"});
    return screen;
}

void check(const PimSelector& selector, const Json& answers, const AutomationObservation& screen)
{
    const auto reading = selector.read(answers, screen);
    if (!reading || !reading->decision)
        return;
    const AutomationAction& action = *reading->decision->action;
    require(action.isValid(screen));
    require(reading->selection.confidence >= selector.thresholds.confidence
        && reading->selection.probability >= selector.thresholds.probability
        && *reading->selection.sensitivity < selector.thresholds.sensitivity);
    if (action.tool == AutomationAction::Tool::scroll)
        return;
    require(action.tool == AutomationAction::Tool::click);
    const AutomationCandidate* element = screen.usableTarget(*action.target);
    require(element && SafetyGuard::risk(element->label, element->role).isSafe());
}

} // namespace

void quorvell::search(std::string_view text)
{
    static const AutomationObservation screen = offeredScreen();
    static const PimSelector general;
    static const PimSelector next = PimNextStep::selector(general);
    require(!PlainFarewell::matches(text) || text.size() <= PlainFarewell::longest);
    const auto json = parseJson(text);
    if (!json)
        return;
    check(general, *json, screen);
    check(next, *json, screen);
    const auto choice = PimChoice::choice(*json, {"dismiss", "continue"});
    require(!choice || choice->probability >= 0.49);
}
