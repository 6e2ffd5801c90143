// SPDX-License-Identifier: MIT
#include "Quorvell/actions/tasks/NextStepFollower.h"

#include "QuorvellCore/automation/engine/pim/PimNextStep.h"
#include "QuorvellCore/text/Characters.h"
#include "QuorvellCore/text/OneLine.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

/// An element is called by its name: its id was one of a look that is over.
std::string valueInWords(std::string_view key, const Json& value, const AutomationObservation& before)
{
    const std::string text = readString(value).value_or(value.is_number() ? dumpJson(value) : "");
    if (key != "element_id")
        return text;
    const auto element = std::ranges::find(before.candidates, text, &AutomationCandidate::id);
    return element == before.candidates.end() ? "" : "“" + element->label + "”";
}

} // namespace

struct NextStepFollower::Sought {
    Wish wish;
    Answer answer;
    StepWish asked;
};

NextStepFollower::NextStepFollower(Ports ports)
    : m_ports(std::move(ports))
{
}

NextStepFollower::~NextStepFollower() = default;

std::string NextStepFollower::inWords(const Json& then, const AutomationObservation& before)
{
    if (const auto words = readString(then))
        return onOneLine(repairUtf8(*words));
    std::string step = readString(then, "tool").value_or("");
    std::ranges::replace(step, '_', ' ');
    const Json* arguments = memberOf(then, "arguments");
    if (step.empty() || !arguments || !arguments->is_object())
        return step;
    for (const auto& [key, value] : arguments->items()) {
        const std::string words = valueInWords(key, value, before);
        if (key == "element_id" && words.empty())
            return {}; // Nobody knows what it means.
        step += words.empty() ? "" : " " + words;
    }
    return onOneLine(repairUtf8(step));
}

StepDecider NextStepFollower::by(PimSelector selector)
{
    return [selector = std::move(selector)](const DecisionContext& context, std::stop_token stop) -> StepAnswer {
        if (auto decision = selector.select(context, std::move(stop)))
            return RoutedDecision{*std::move(decision), DecisionTier::pim, 0, {}};
        return DecisionError{DecisionError::Kind::malformed, 0, "The selector is not sure of the next step."};
    };
}

void NextStepFollower::follow(Wish wish, Answer answer)
{
    giveUp();
    const std::string step = inWords(wish.then, wish.before);
    auto context = PimNextStep::context({wish.task, wish.screen.observation, wish.history, std::nullopt}, step);
    if (!m_ports.decider || !context)
        return answer(std::nullopt);
    m_sought = std::make_shared<Sought>();
    m_sought->wish = std::move(wish);
    m_sought->answer = std::move(answer);
    m_sought->asked = m_ports.deciding.ask(
        m_ports.decider, *std::move(context), [this](const StepAnswer& decided) { this->decided(decided); });
}

void NextStepFollower::decided(const StepAnswer& answer)
{
    const auto sought = std::exchange(m_sought, nullptr);
    const auto* routed = std::get_if<RoutedDecision>(&answer);
    const AutomationObservation& observation = sought->wish.screen.observation;
    if (!routed || routed->decision.kind != AutomationDecision::Kind::action || !routed->decision.action
        || !routed->decision.action->isValid(observation))
        return sought->answer(std::nullopt);
    const AutomationAction& action = *routed->decision.action;
    ProposedAction proposed{.callID = sought->wish.callID,
        .tool = std::string(storedText(action.tool)),
        .action = action,
        .expected = routed->decision.expected,
        .source = ProposedAction::Source::engine,
        .revision = observation.revision};
    m_ports.actions.run(
        std::move(proposed), [answer = sought->answer](ActionResult result) { answer(std::move(result)); });
}

void NextStepFollower::giveUp()
{
    if (const auto sought = std::exchange(m_sought, nullptr)) {
        sought->asked.abandon();
        sought->answer(std::nullopt);
    }
}

} // namespace quorvell
