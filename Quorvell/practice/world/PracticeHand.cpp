// SPDX-License-Identifier: MIT
#include "Quorvell/practice/world/PracticeHand.h"

#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/TextMatch.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace quorvell {

namespace {

constexpr std::string_view noSuchElement = "That element is not there any more.";

PracticeOutcome failed(std::string_view problem)
{
    return {{ScreenOutcome::Kind::failed, std::string(problem)}, {}};
}

bool isSwitch(const PracticeElement& element)
{
    return element.role == "AXCheckBox" || element.role == "AXSwitch";
}

bool isSamePath(const std::vector<std::string>& one, const std::vector<std::string>& other)
{
    return std::equal(one.begin(), one.end(), other.begin(), other.end(), [](const auto& item, const auto& otherItem) {
        return TextMatch::normalized(item) == TextMatch::normalized(otherItem);
    });
}

} // namespace

PracticeOutcome PracticeHand::answerOf(const PracticeElement& element)
{
    if (element.answer == PracticeElement::Answer::unknown)
        return {{ScreenOutcome::Kind::unknown, "The application did not answer."}, element.answerDelay};
    return {{}, element.answerDelay};
}

const PracticeShown* PracticeHand::focused() const
{
    const auto& shown = m_view.elements;
    const auto found = std::find_if(shown.begin(), shown.end(), [](const PracticeShown& one) { return one.isFocused; });
    return found == shown.end() ? nullptr : &*found;
}

const PracticeShown* PracticeHand::usable(bool PracticeElement::*flag) const
{
    const auto& shown = m_view.elements;
    const auto found = std::find_if(shown.begin(), shown.end(),
        [&](const PracticeShown& one) { return one.element && one.element->*flag && one.isEnabled; });
    return found == shown.end() ? nullptr : &*found;
}

PracticeOutcome PracticeHand::operator()(const AutomationAction& action)
{
    const PracticeShown* shown = m_view.shown(action.target.value_or(""));
    switch (action.tool) {
    case AutomationAction::Tool::click:
        return shown ? press(*shown) : failed(noSuchElement);
    case AutomationAction::Tool::typeText:
        return type(
            action.target.value_or(""), action.text.value_or(""), shown ? m_state.fact(shown->element->fact) : "");
    case AutomationAction::Tool::pressKey:
        // Return behind a typed line goes to its box only.
        if (action.target && (!shown || !shown->isFocused))
            return failed("The box went away while it was typed into.");
        return pressKey(lowerCased(action.key.value_or("")));
    case AutomationAction::Tool::scroll:
        m_state.scroll(action.direction == "up" ? -1 : 1);
        return {};
    case AutomationAction::Tool::chooseMenu:
        return chooseMenu(action.path.value_or(std::vector<std::string>()));
    case AutomationAction::Tool::openApp:
        if (const PracticeApp* app = m_state.appNamed(action.name.value_or(""))) {
            m_state.openApp(*app);
            return {};
        }
        return failed("No application of that name is installed.");
    case AutomationAction::Tool::openWebsite:
        return openWebsite(action.address.value_or(""));
    }
    return {};
}

PracticeOutcome PracticeHand::operator()(const screen_action::ReplaceText& action)
{
    return type(action.target, action.text, {});
}

PracticeOutcome PracticeHand::operator()(const screen_action::ClickSpot& action)
{
    const PracticeShown* shown = m_view.at(action.x, action.y);
    return shown && shown->element ? press(*shown) : PracticeOutcome{};
}

PracticeOutcome PracticeHand::operator()(const screen_action::Drag& action)
{
    const PracticeShown* from = m_view.at(action.x, action.y);
    const PracticeShown* to = m_view.at(action.toX, action.toY);
    if (!from || !from->element || !from->isEnabled)
        return {};
    if (from->element->role == "AXSlider") {
        const double part = (action.toX - from->area.left) / (from->area.right - from->area.left);
        return change(*from->element, std::to_string(std::lround(100 * std::clamp(part, 0.0, 1.0))));
    }
    const auto drop = to && to->element ? from->element->drops.find(to->element->name) : from->element->drops.end();
    if (drop != from->element->drops.end())
        m_state.run(drop->second);
    return answerOf(*from->element);
}

PracticeOutcome PracticeHand::operator()(const screen_action::ChooseOption& action)
{
    const PracticeShown* shown = m_view.shown(action.target);
    return shown ? choose(*shown, action.option) : failed(noSuchElement);
}

PracticeOutcome PracticeHand::operator()(const screen_action::BrowserControl& action)
{
    using Kind = screen_action::BrowserControl::Kind;
    if (!m_state.tab())
        return failed("No browser is in front.");
    switch (action.kind) {
    case Kind::back:
        return m_state.travel(-1) ? PracticeOutcome{} : failed("There is no page before this one.");
    case Kind::forward:
        return m_state.travel(1) ? PracticeOutcome{} : failed("There is no page after this one.");
    case Kind::reload:
        return m_state.travel(0) ? PracticeOutcome{} : failed("There is no page in this tab.");
    case Kind::newTab:
        m_state.openTab("");
        return {};
    case Kind::closeTab:
    case Kind::switchTab:
        return switchTab(action.tab, action.kind == Kind::closeTab);
    }
    return {};
}

PracticeOutcome PracticeHand::operator()(const screen_action::QuickAction& action)
{
    using Kind = screen_action::QuickAction::Kind;
    const std::string value = action.value.empty() ? "yes" : action.value;
    const auto set = [&](const char* name, const std::string& text) {
        m_state.setFact(name, text);
        return PracticeOutcome{};
    };
    switch (action.kind) {
    case Kind::volume:
        return set("volume", value);
    case Kind::mute:
        return set("muted", "yes");
    case Kind::unmute:
        return set("muted", "no");
    case Kind::brightness:
        return set("brightness", value);
    case Kind::playPause:
        return set("playing", m_state.fact("playing") == "yes" ? "no" : "yes");
    case Kind::nextTrack:
        return set("track", "next");
    case Kind::previousTrack:
        return set("track", "previous");
    case Kind::doNotDisturb:
        return set("do not disturb", value);
    case Kind::lockScreen:
        return set("locked", "yes");
    case Kind::screenshot:
        return set("screenshot", "yes");
    case Kind::showDesktop:
        return set("desktop shown", "yes");
    }
    return {};
}

PracticeOutcome PracticeHand::press(const PracticeShown& shown)
{
    if (!shown.element)
        return {};
    const PracticeElement& element = *shown.element;
    if (!shown.isEnabled)
        return failed("It cannot be pressed now.");
    if (element.answer == PracticeElement::Answer::failed)
        return failed("The application would not take it.");
    if (element.takesFocus())
        m_state.setFocus(element.name);
    if (isSwitch(element))
        (void)change(element, m_state.fact(element.fact) == "1" ? "0" : "1");
    else if (element.role == "AXRadioButton")
        (void)change(element, shown.label);
    if (element.pressed.empty() && !element.address.empty())
        m_state.openPage(m_state.filled(element.address));
    m_state.run(element.pressed);
    return answerOf(element);
}

PracticeOutcome PracticeHand::type(const std::string& target, const std::string& text, std::string before)
{
    const PracticeShown* shown = m_view.shown(target);
    if (!shown)
        return failed(noSuchElement);
    if (!shown->isEnabled || !shown->element->isTextBox())
        return failed("Nothing can be typed there.");
    if (shown->element->answer == PracticeElement::Answer::failed)
        return failed("The application would not take it.");
    m_state.setFocus(target);
    return change(*shown->element, std::move(before) + text);
}

PracticeOutcome PracticeHand::choose(const PracticeShown& shown, const std::string& option)
{
    const std::string wanted = TextMatch::normalized(option);
    const auto& options = shown.element->options;
    const auto found = std::find_if(options.begin(), options.end(),
        [&](const std::string& known) { return TextMatch::normalized(known) == wanted; });
    if (!shown.isEnabled)
        return failed("Nothing can be chosen there now.");
    if (found == options.end())
        return failed("It has no such option.");
    if (shown.element->answer == PracticeElement::Answer::failed)
        return failed("The application would not take it.");
    return change(*shown.element, *found);
}

PracticeOutcome PracticeHand::change(const PracticeElement& element, std::string value)
{
    const bool isNew = m_state.fact(element.fact) != value;
    m_state.setFact(element.fact, std::move(value));
    if (isNew)
        m_state.run(element.changed);
    return answerOf(element);
}

PracticeOutcome PracticeHand::chooseMenu(const std::vector<std::string>& path)
{
    const auto found = std::find_if(m_view.menus.begin(), m_view.menus.end(),
        [&](const PracticeMenuItem* item) { return isSamePath(item->path, path); });
    if (found == m_view.menus.end())
        return failed("There is no such menu.");
    if (!m_state.hold((*found)->enabledWhen))
        return failed("That menu cannot be chosen now.");
    m_state.run((*found)->chosen);
    return {};
}

PracticeOutcome PracticeHand::openWebsite(const std::string& address)
{
    return m_state.openTab(address) ? PracticeOutcome{} : failed("No browser is installed.");
}

PracticeOutcome PracticeHand::switchTab(const std::string& tab, bool isClosing)
{
    const auto& tabs = m_state.front()->tabs;
    std::size_t found = m_state.front()->frontTab;
    if (!tab.empty()) {
        const std::string wanted = TextMatch::normalized(tab);
        const auto named = std::find_if(tabs.begin(), tabs.end(), [&](const PracticeTab& one) {
            const std::string title = one.place ? m_state.filled(one.place->title) : one.problem;
            return TextMatch::normalized(title).find(wanted) != std::string::npos;
        });
        if (named == tabs.end())
            return failed("There is no such tab.");
        found = static_cast<std::size_t>(named - tabs.begin());
    }
    m_state.switchTab(found);
    if (isClosing)
        m_state.closeTab();
    return {};
}

} // namespace quorvell
