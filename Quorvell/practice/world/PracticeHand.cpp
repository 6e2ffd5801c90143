// SPDX-License-Identifier: MIT
#include "Quorvell/practice/world/PracticeHand.h"

#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/SiteMatch.h"
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

/// What the application answers to something that it took.
PracticeOutcome answerOf(const PracticeElement& element)
{
    if (element.answer == PracticeElement::Answer::unknown)
        return {{ScreenOutcome::Kind::unknown, "The application did not answer."}, element.answerDelay};
    return {{}, element.answerDelay};
}

bool isTextBox(const PracticeElement& element)
{
    return element.role == "AXTextField" || element.role == "AXTextArea" || element.role == "AXComboBox";
}

bool isSwitch(const PracticeElement& element)
{
    return element.role == "AXCheckBox" || element.role == "AXSwitch";
}

/// What Tab stops at.
bool takesFocus(const PracticeElement& element)
{
    constexpr std::string_view still[] = {"AXStaticText", "AXHeading", "AXImage", "AXGroup", "AXProgressIndicator"};
    return std::find(std::begin(still), std::end(still), element.role) == std::end(still);
}

bool isSamePath(const std::vector<std::string>& one, const std::vector<std::string>& other)
{
    return std::equal(one.begin(), one.end(), other.begin(), other.end(), [](const auto& item, const auto& otherItem) {
        return TextMatch::normalized(item) == TextMatch::normalized(otherItem);
    });
}

std::string withoutLastCharacter(std::string text)
{
    const auto isInside = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; };
    while (!text.empty() && isInside(text.back()))
        text.pop_back();
    if (!text.empty())
        text.pop_back();
    return text;
}

} // namespace

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
    if (takesFocus(element))
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
    if (!shown->isEnabled || !isTextBox(*shown->element))
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

// Keys

PracticeOutcome PracticeHand::pressKey(const std::string& key)
{
    const PracticeShown* focus = focused();
    const bool isTyping = focus && isTextBox(*focus->element);
    if (key == "return")
        return pressReturn(focus);
    if (isTyping && key == "delete")
        return change(*focus->element, withoutLastCharacter(m_state.fact(focus->element->fact)));
    if (isTyping && key == "space")
        return change(*focus->element, m_state.fact(focus->element->fact) + " ");
    if (const PracticePlace* place = m_state.place(); place && place->keys.contains(key)) {
        m_state.run(place->keys.at(key));
        return {};
    }
    if (key == "space" && focus)
        return press(*focus);
    if (key == "tab")
        return moveFocus();
    if (key == "escape")
        return escape();
    if (key == "page down" || key == "down" || key == "page up" || key == "up")
        m_state.scroll(key.ends_with("up") ? -1 : 1);
    else if (key == "home" || key == "end")
        m_state.scroll(key == "home" ? -1'000 : 1'000);
    else if (key == "command+w")
        return closeFront();
    else if (key == "command+t" && m_state.tab())
        m_state.openTab("");
    else if (key == "command+r" && m_state.tab())
        m_state.travel(0);
    if ((key == "command+l" || key == "command+t") && m_state.tab() && m_state.front()->app->addressBar)
        m_state.setFocus(m_state.front()->app->addressBar->name);
    return {};
}

PracticeOutcome PracticeHand::pressReturn(const PracticeShown* focused)
{
    if (focused && isTextBox(*focused->element)) {
        const PracticeElement& box = *focused->element;
        const auto& bar = m_state.front()->app->addressBar;
        if (!box.submitted.empty() || (bar && &*bar == &box))
            return submit(*focused);
        if (box.role == "AXTextArea")
            return change(box, m_state.fact(box.fact) + "\n");
    } else if (focused) {
        return press(*focused);
    }
    if (const PracticeShown* button = usable(&PracticeElement::isDefault))
        return press(*button);
    if (const PracticePlace* place = m_state.place(); place && place->keys.contains("return"))
        m_state.run(place->keys.at("return"));
    return {};
}

PracticeOutcome PracticeHand::submit(const PracticeShown& field)
{
    const PracticeElement& box = *field.element;
    const PracticeApp& app = *m_state.front()->app;
    if (!app.addressBar || &*app.addressBar != &box) {
        m_state.run(box.submitted);
        return answerOf(box);
    }
    const std::string typed = m_state.fact(box.fact);
    if (SiteMatch::host(typed) || app.searchPage.empty()) {
        m_state.openPage(typed);
        return {};
    }
    m_state.setFact("searched", typed);
    m_state.openPage(app.searchPage);
    return {};
}

PracticeOutcome PracticeHand::escape()
{
    if (const PracticeShown* button = usable(&PracticeElement::isCancel))
        return press(*button);
    const PracticePlace* place = m_state.place();
    if (place && place->isDialog)
        m_state.closeWindow(*place);
    return {};
}

PracticeOutcome PracticeHand::closeFront()
{
    if (!m_state.front())
        return {};
    if (!m_state.front()->windows.empty())
        m_state.closeWindow(*m_state.front()->windows.back());
    else if (m_state.tab())
        m_state.closeTab();
    return {};
}

PracticeOutcome PracticeHand::moveFocus()
{
    std::vector<const PracticeShown*> stops;
    std::size_t next = 0;
    for (const PracticeShown& one : m_view.elements) {
        if (!one.element || !one.isEnabled || !takesFocus(*one.element))
            continue;
        stops.push_back(&one);
        next = one.isFocused ? stops.size() : next;
    }
    if (!stops.empty())
        m_state.setFocus(stops[next % stops.size()]->element->name);
    return {};
}

} // namespace quorvell
