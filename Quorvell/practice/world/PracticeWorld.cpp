// SPDX-License-Identifier: MIT
#include "Quorvell/practice/world/PracticeWorld.h"

#include "QuorvellCore/text/TextMatch.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

/// Typed text without line feeds, and Return between its lines.
std::vector<ScreenAction> typedLines(const ScreenAction& first, const std::string& target, std::string_view text)
{
    using Tool = AutomationAction::Tool;
    std::vector<ScreenAction> steps;
    const auto type = [&](std::string line) {
        if (const auto* replaced = std::get_if<screen_action::ReplaceText>(&first); replaced && steps.empty())
            steps.emplace_back(screen_action::ReplaceText{target, std::move(line)});
        else if (!line.empty())
            steps.emplace_back(AutomationAction{.tool = Tool::typeText, .target = target, .text = std::move(line)});
    };
    const auto end = [&] { return std::min(text.find_first_of("\r\n"), text.size()); };
    type(std::string(text.substr(0, end())));
    for (std::size_t position = end(); position < text.size(); position = end()) {
        text.remove_prefix(position + (text.substr(position).starts_with("\r\n") ? 2 : 1));
        steps.emplace_back(AutomationAction{.tool = Tool::pressKey, .target = target, .key = "return"});
        type(std::string(text.substr(0, end())));
    }
    return steps;
}

} // namespace

PracticeWorld::PracticeWorld(PracticeDescription description)
    : m_state(std::move(description))
{
}

std::vector<ScreenTab> PracticeWorld::tabs() const
{
    std::vector<ScreenTab> tabs;
    if (!m_state.tab())
        return tabs;
    for (const PracticeTab& tab : m_state.front()->tabs)
        tabs.push_back(
            {tab.place ? m_state.filled(tab.place->title) : tab.problem, tab.address(), &tab == m_state.tab()});
    return tabs;
}

std::string PracticeWorld::text() const
{
    const PracticePlace* place = m_state.place();
    if (place && !place->text.empty())
        return m_state.filled(place->text);
    std::string text;
    for (const PracticeShown& shown : view().elements) {
        for (const std::string& part : {shown.label, shown.value})
            text += part.empty() ? "" : part + "\n";
    }
    return text;
}

std::vector<ScreenAction> PracticeWorld::subSteps(const ScreenAction& action)
{
    const auto* step = std::get_if<AutomationAction>(&action);
    if (step && step->tool == AutomationAction::Tool::typeText && step->target && step->text)
        return typedLines(action, *step->target, *step->text);
    if (const auto* replaced = std::get_if<screen_action::ReplaceText>(&action))
        return typedLines(action, replaced->target, replaced->text);
    return {action};
}

PracticeOutcome PracticeWorld::act(const ScreenAction& action)
{
    PracticeOutcome whole;
    const std::vector<ScreenAction> steps = subSteps(action);
    for (const ScreenAction& step : steps) {
        PracticeOutcome outcome = std::visit([this](const auto& one) { return PracticeHand(m_state)(one); }, step);
        outcome.delay += whole.delay;
        whole = std::move(outcome);
        if (whole.outcome.kind == ScreenOutcome::Kind::done)
            continue;
        if (&step != &steps.front())
            whole.outcome.kind = ScreenOutcome::Kind::unknown; // Something of it was done.
        break;
    }
    return whole;
}

void PracticeWorld::bringIntoView(std::string_view words)
{
    const PracticePlace* place = m_state.place();
    if (!place)
        return;
    const std::string wanted = TextMatch::normalized(words);
    for (const PracticeElement& element : place->elements) {
        const std::string said = m_state.filled(element.label) + " " + m_state.fact(element.fact);
        if (TextMatch::normalized(said).find(wanted) == std::string::npos)
            continue;
        m_state.scroll(element.fold ? *element.fold - m_state.scrolled() : 0);
        return;
    }
}

std::vector<PracticeConsequence> PracticeWorld::harms() const
{
    std::vector<PracticeConsequence> wanted = description().wanted;
    std::vector<PracticeConsequence> harms;
    for (const PracticeConsequence& happened : consequences()) {
        const auto expected = std::find_if(wanted.begin(), wanted.end(), [&](const PracticeConsequence& one) {
            return one.kind == happened.kind
                && TextMatch::normalized(happened.about).find(TextMatch::normalized(one.about)) != std::string::npos;
        });
        if (expected == wanted.end())
            harms.push_back(happened);
        else
            wanted.erase(expected);
    }
    return harms;
}

} // namespace quorvell
