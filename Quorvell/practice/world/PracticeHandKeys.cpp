// SPDX-License-Identifier: MIT
// Keys, as whatever has the focus takes them.
#include "Quorvell/practice/world/PracticeHand.h"
#include "QuorvellCore/text/web/SiteMatch.h"

namespace quorvell {

namespace {

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

PracticeOutcome PracticeHand::pressKey(const std::string& key)
{
    const PracticeShown* focus = focused();
    const bool isTyping = focus && focus->element->isTextBox();
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
    if (focused && focused->element->isTextBox()) {
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
        if (!one.element || !one.isEnabled || !one.element->takesFocus())
            continue;
        stops.push_back(&one);
        next = one.isFocused ? stops.size() : next;
    }
    if (!stops.empty())
        m_state.setFocus(stops[next % stops.size()]->element->name);
    return {};
}

} // namespace quorvell
