// SPDX-License-Identifier: MIT
// Of LookRisk: what is typed, and which keys are pressed.
#include "QuorvellCore/automation/proposals/AddressRisk.h"
#include "QuorvellCore/automation/proposals/LookRisk.h"
#include "QuorvellCore/automation/screen/ObservationBounds.h"
#include "QuorvellCore/safety/ElementRole.h"
#include "QuorvellCore/safety/SafetyGuard.h"
#include "QuorvellCore/safety/SpokenLabel.h"
#include "QuorvellCore/safety/desktop/DesktopDangers.h"
#include "QuorvellCore/safety/places/JudgedAddress.h"
#include "QuorvellCore/text/Characters.h"

#include <algorithm>
#include <array>

namespace quorvell {

namespace {

/// Each of them is Return where it is typed.
constexpr auto lineBreaks = std::to_array<std::string_view>({"\n", "\r", "\v", "\f", "\u0085", "\u2028", "\u2029"});

/// A window has one default button and one focus; a page may claim any number.
constexpr int mostAtOnce = 3;

ActionRisk unknownReturn()
{
    return ActionRisk::askFirst("Shall I press that key? I can't tell what it does there.");
}

constexpr std::string_view multiLineBox = "AXTextArea";

std::size_t firstLineBreak(std::string_view text)
{
    std::size_t first = std::string_view::npos;
    for (const std::string_view lineBreak : lineBreaks)
        first = std::min(first, text.find(lineBreak));
    return first;
}

std::string_view judgedPart(std::string_view text)
{
    return text.substr(0, ObservationBounds::longestName);
}

bool isBrowsersAddressBar(const AutomationCandidate& candidate, const ScreenElement& element)
{
    return !element.isContent && SafetyGuard::isAddressBar(candidate.label);
}

} // namespace

/// Of a text that says what a box is for.
ActionRisk LookRisk::ofText(std::string_view text) const
{
    if (text.size() > ObservationBounds::longestName)
        return ActionRisk::askFirst("More is written there than I can check. Shall I go ahead?");
    return SafetyGuard::fieldRisk(text, {});
}

ActionRisk LookRisk::ofField(const AutomationCandidate& candidate, const std::string& text, bool isAdded) const
{
    if (candidate.secure)
        return SafetyGuard::fieldRisk("secure", candidate.role);
    const ScreenElement& element = elementOf(candidate);
    ActionRisk risk = SafetyGuard::fieldRisk(judgedPart(candidate.label), candidate.role);
    risk = ActionRisk::strictest(std::move(risk), SafetyGuard::fieldRisk({}, element.subrole));
    for (const std::string_view said : {std::string_view(element.hint), std::string_view(element.description)})
        risk = ActionRisk::strictest(std::move(risk), ofText(said));
    risk = ActionRisk::strictest(std::move(risk), SafetyGuard::textRisk(text));
    // A number is one also when it is typed piece by piece.
    if (isAdded && !candidate.value.empty())
        risk = ActionRisk::strictest(std::move(risk), SafetyGuard::textRisk(candidate.value + text));
    for (const std::string_view said :
        {std::string_view(candidate.label), std::string_view(element.hint), std::string_view(element.description)}) {
        if (DesktopDangers::isCommandField(judgedPart(said)))
            return ActionRisk::strictest(std::move(risk), DesktopDangers::typeRisk(DesktopPlace::terminal, text));
    }
    return risk;
}

ActionRisk LookRisk::ofTyping(const AutomationCandidate& candidate, const std::string& text, bool isAdded) const
{
    ActionRisk risk = ActionRisk::strictest(ofField(candidate, text, isAdded), DesktopDangers::typeRisk(m_place, text));
    if (m_place == DesktopPlace::settings)
        risk = ActionRisk::strictest(std::move(risk), ofActing());
    if (text.find('\t') != std::string::npos)
        risk = ActionRisk::strictest(std::move(risk),
            ActionRisk::askFirst("There is a tab in that text, which may go on in another box. Shall I type it?"));
    const std::size_t end = firstLineBreak(text);
    if (end == std::string::npos)
        return risk;
    const std::string line = (isAdded ? candidate.value : std::string()) + text.substr(0, end);
    risk = ActionRisk::strictest(std::move(risk), ofReturn(candidate, line));
    // What follows goes wherever Return leads, unless the box has lines of its own.
    if (candidate.role == multiLineBox || trimmed(std::string_view(text).substr(end)).empty())
        return risk;
    return ActionRisk::strictest(std::move(risk),
        ActionRisk::askFirst("There is more behind the end of the line, which may go elsewhere. Shall I type it?"));
}

/// Where Return in a box presses a button of which nobody knows that it does, it is one that stands there: in a page
/// one of the page's. A window that tells its default button presses no other.
ActionRisk LookRisk::ofSubmitting(const AutomationCandidate& box) const
{
    const bool isInPage = elementOf(box).isContent;
    const bool hasDefault = std::any_of(
        m_look.elements.begin(), m_look.elements.end(), [](const ScreenElement& element) { return element.isDefault; });
    if (!isInPage && hasDefault)
        return ActionRisk::safe();
    constexpr std::size_t mostBytes = 8 * 1024; // Of all labels; on a screen with more of them nobody can tell.
    constexpr std::string_view button = "AXButton";
    std::size_t bytes = 0;
    for (const AutomationCandidate& candidate : m_look.observation.candidates) {
        if (candidate.role != button || !candidate.enabled || elementOf(candidate).isContent != isInPage)
            continue;
        bytes += candidate.label.size();
        if (bytes > mostBytes)
            return unknownReturn();
        if (!ofLabel(candidate.label, button).isSafe())
            return ActionRisk::askFirst(
                "Shall I press Return? It may press " + SpokenLabel::quoted(candidate.label) + ".");
    }
    return ActionRisk::safe();
}

ActionRisk LookRisk::ofDefaultButtons() const
{
    ActionRisk risk = ActionRisk::safe();
    int found = 0;
    const std::size_t known = std::min(m_look.elements.size(), m_look.observation.candidates.size());
    for (std::size_t place = 0; place < known && risk.kind != ActionRisk::Case::never; ++place) {
        const AutomationCandidate& candidate = m_look.observation.candidates[place];
        if (!m_look.elements[place].isDefault)
            continue;
        if (++found > mostAtOnce)
            return ActionRisk::strictest(std::move(risk), unknownReturn());
        risk = ActionRisk::strictest(std::move(risk),
            ActionRisk::strictest(
                SafetyGuard::defaultButtonRisk(judgedPart(candidate.label), candidate.role, m_look.observation.app),
                ofPressing(candidate)));
    }
    return risk;
}

ActionRisk LookRisk::ofReturnInBox(const AutomationCandidate& candidate, std::string_view value) const
{
    const ScreenElement& element = elementOf(candidate);
    const std::string_view label = judgedPart(candidate.label);
    const std::string hint = std::string(judgedPart(element.hint)) + ' ' + std::string(judgedPart(element.description));
    if (isBrowsersAddressBar(candidate, element)) {
        const ActionRisk risk = SafetyGuard::addressBarRisk(value);
        return JudgedAddress::read(value) ? ActionRisk::strictest(risk, addressRisk(value)) : risk;
    }
    // Inside a page, a box that calls itself an address bar is one more box.
    const std::string named = "box " + std::string(label);
    ActionRisk risk =
        SafetyGuard::returnInTextBoxRisk(named, candidate.role, m_look.observation.app, hint, element.subrole);
    if (SafetyGuard::isSearchField(candidate.role, element.subrole, label, hint))
        return risk;
    if (m_place == DesktopPlace::messenger)
        risk = ActionRisk::strictest(std::move(risk), ActionRisk::askFirst("Shall I send it?"));
    return ActionRisk::strictest(std::move(risk), ofSubmitting(candidate));
}

ActionRisk LookRisk::ofReturn(const AutomationCandidate& candidate, std::string_view value) const
{
    const bool isBox = ElementRole::isTextEntry(candidate.role) || candidate.role == ElementRole::searchField;
    const ActionRisk risk = isBox ? ofReturnInBox(candidate, value) : ofPressing(candidate);
    if (isBox && isBrowsersAddressBar(candidate, elementOf(candidate)))
        return ActionRisk::strictest(risk, DesktopDangers::returnRisk(m_place));
    return ActionRisk::strictest(ActionRisk::strictest(risk, ofDefaultButtons()), DesktopDangers::returnRisk(m_place));
}

/// Return and Space press what has the focus. Where that is not known, so is not what they do.
ActionRisk LookRisk::ofKeyOnFocus(std::string_view key) const
{
    ActionRisk risk = ActionRisk::safe();
    int found = 0;
    for (const AutomationCandidate& candidate : m_look.observation.candidates) {
        if (!candidate.focused)
            continue;
        if (++found > mostAtOnce)
            return ActionRisk::strictest(std::move(risk), unknownReturn());
        if (key == "return")
            risk = ActionRisk::strictest(std::move(risk), ofReturn(candidate, candidate.value));
        else if (!ElementRole::isTextEntry(candidate.role))
            risk = ActionRisk::strictest(std::move(risk), ofPressing(candidate));
    }
    if (found > 0)
        return risk;
    if (key != "return")
        return ActionRisk::askFirst("Shall I press the space bar? I can't tell what it does there.");
    risk = ActionRisk::strictest(ofDefaultButtons(), DesktopDangers::returnRisk(m_place));
    return ActionRisk::strictest(
        std::move(risk), SafetyGuard::defaultButtonRisk({}, ElementRole::window, m_look.observation.app));
}

ActionRisk LookRisk::ofKey(std::string_view key) const
{
    const auto& candidates = m_look.observation.candidates;
    const bool inTextBox = std::any_of(candidates.begin(), candidates.end(), [](const AutomationCandidate& candidate) {
        return candidate.focused && ElementRole::isTextEntry(candidate.role);
    });
    const ActionRisk risk = ActionRisk::strictest(ofActing(), SafetyGuard::keyRisk(key, 0, inTextBox));
    if (key == "return" || key == "space")
        return ActionRisk::strictest(risk, ofKeyOnFocus(key));
    // On this desktop the key alone moves what is selected to the trash.
    if (key == "delete" && !inTextBox)
        return ActionRisk::strictest(
            risk, ActionRisk::askFirst("Shall I press Delete? It may delete what is selected."));
    return risk;
}

} // namespace quorvell
