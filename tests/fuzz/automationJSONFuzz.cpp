// SPDX-License-Identifier: MIT
// Any JSON is either no record or one within the bounds that survives being written and read again unchanged; what is
// asked of a screen has an answer, whatever the screen.
#include "QuorvellCore/automation/json/AutomationJson.h"
#include "QuorvellCore/automation/loop/ActionText.h"
#include "QuorvellCore/automation/screen/ObservationBounds.h"
#include "fuzzing.h"

#include <nlohmann/json.hpp>

namespace {

using namespace quorvell;

template <AutomationRecord Record> std::optional<Record> readAndWritten(const Json& json)
{
    auto record = AutomationJson::decode<Record>(json);
    if (record) {
        const auto sent = parseJson(dumpJson(AutomationJson::encode(*record)));
        std::vector<std::string> problems;
        require(sent && AutomationJson::decode<Record>(*sent, problems) == record && problems.empty());
    }
    return record;
}

void askOf(const AutomationObservation& screen, const AutomationAction& action, const Postcondition& condition)
{
    const bool isValid = action.isValid(screen);
    require(!isValid || !action.target || screen.usableTarget(*action.target));
    require(actionText(action, screen).starts_with(storedText(action.tool)));
    (void)action.arguments();
    const bool isNew = condition.kind == Postcondition::Kind::labelAppeared
        || condition.kind == Postcondition::Kind::valueContains || condition.kind == Postcondition::Kind::changed;
    require(!isNew || !condition.verified(screen, screen));
    const AutomationObservation told = screen.redacted();
    require(told.redacted() == told && told.candidates.size() == screen.candidates.size());
    for (const AutomationCandidate& candidate : told.candidates)
        require(!candidate.secure || candidate.value.empty());
}

} // namespace

void quorvell::search(std::string_view text)
{
    const auto json = parseJson(text);
    if (!json)
        return;
    (void)readAndWritten<AutomationCandidate>(*json);
    (void)readAndWritten<AutomationHistory>(*json);
    const auto decision = readAndWritten<AutomationDecision>(*json);
    const auto action = readAndWritten<AutomationAction>(*json);
    const auto condition = readAndWritten<Postcondition>(*json);
    const auto screen = readAndWritten<AutomationObservation>(*json);
    const auto context = readAndWritten<DecisionContext>(*json);
    askOf(context ? context->observation : screen.value_or(AutomationObservation{}),
        action.value_or(AutomationAction{}), condition.value_or(Postcondition{}));

    // A screen, a step on it and what is expected of it, in one list.
    if (!json->is_array() || json->size() != 3)
        return;
    const auto shown = AutomationJson::decode<AutomationObservation>((*json)[0]);
    const auto step = AutomationJson::decode<AutomationAction>((*json)[1]);
    const auto expected = AutomationJson::decode<Postcondition>((*json)[2]);
    if (shown && step && expected)
        askOf(*shown, *step, *expected);
}
