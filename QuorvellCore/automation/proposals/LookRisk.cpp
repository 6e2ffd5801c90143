// SPDX-License-Identifier: MIT
#include "QuorvellCore/automation/proposals/LookRisk.h"

#include "QuorvellCore/automation/proposals/AddressRisk.h"
#include "QuorvellCore/automation/screen/ObservationBounds.h"
#include "QuorvellCore/safety/ElementRole.h"
#include "QuorvellCore/safety/SafetyGuard.h"
#include "QuorvellCore/safety/SpokenLabel.h"
#include "QuorvellCore/safety/desktop/DesktopDangers.h"
#include "QuorvellCore/safety/words/ForeignWords.h"
#include "QuorvellCore/safety/words/JudgedText.h"
#include "QuorvellCore/safety/words/LabelPatterns.h"

#include <algorithm>
#include <array>

namespace quorvell {

namespace {

constexpr std::string_view button = "AXButton";
constexpr std::string_view menuItem = "AXMenuItem";

ActionRisk pressQuestion(std::string_view label)
{
    return ActionRisk::askFirst("Shall I press " + SpokenLabel::quoted(label) + " for you?");
}

/// Of what is no link, in whatever language.
ActionRisk wordsRisk(const JudgedText& words, std::string_view label)
{
    ActionRisk risk = DesktopDangers::labelRisk(words, label);
    return risk.isSafe() && ForeignWords::saysThatItActs(words) ? pressQuestion(label) : risk;
}

bool saysThatItActs(const std::string& text)
{
    const JudgedText words(text);
    return !SafetyGuard::risk(words, text, button).isSafe() || !wordsRisk(words, text).isSafe();
}

bool isReadable(std::string_view text)
{
    return !SpokenLabel::shown(text).empty();
}

bool isTextBox(const AutomationCandidate& candidate)
{
    return ElementRole::isTextEntry(candidate.role) || candidate.role == ElementRole::searchField;
}

/// Holds other elements; what is pressed is one of those.
bool isContainer(std::string_view role)
{
    constexpr auto roles = std::to_array<std::string_view>(
        {"AXWindow", "AXGroup", "AXScrollArea", "AXWebArea", "AXSplitGroup", "AXToolbar", "AXLayoutArea"});
    return std::find(roles.begin(), roles.end(), role) != roles.end();
}

/// Says something, and is not what is pressed.
bool isText(std::string_view role)
{
    constexpr auto roles = std::to_array<std::string_view>(
        {"AXStaticText", "AXHeading", "AXGroup", "AXDialog", "AXSheet", "AXAlert", "AXWindow"});
    return std::find(roles.begin(), roles.end(), role) != roles.end();
}

/// A part of a screen that was cut is not judged by the part that is left.
ActionRisk tooLongRisk(std::string_view text)
{
    return text.size() <= ObservationBounds::longestName
        ? ActionRisk::safe()
        : ActionRisk::askFirst("More is written there than I can check. Shall I go ahead?");
}

} // namespace

LookRisk::LookRisk(const ScreenLook& look)
    : m_look(look)
    , m_place(desktopPlace(look.observation.app, look.appIdentifier, look.observation.window))
{
    if (m_place == DesktopPlace::shell && hasAuthenticationHeading())
        m_place = DesktopPlace::authentication;
}

/// Desktops show such windows as parts of themselves, without a title.
bool LookRisk::hasAuthenticationHeading() const
{
    const auto& candidates = m_look.observation.candidates;
    return std::any_of(candidates.begin(), candidates.end(),
        [](const AutomationCandidate& candidate) { return candidate.secure || asksToAuthenticate(candidate.label); });
}

const ScreenElement& LookRisk::elementOf(const AutomationCandidate& candidate) const
{
    static const ScreenElement unknown;
    const auto place = static_cast<std::size_t>(&candidate - m_look.observation.candidates.data());
    return place < m_look.elements.size() ? m_look.elements[place] : unknown;
}

ActionRisk LookRisk::ofActing() const
{
    // The desktop's settings may be known by their name alone.
    const std::string_view known = m_look.appIdentifier;
    const std::string_view identifier = m_place == DesktopPlace::settings ? "settings" : known;
    return ActionRisk::strictest(
        SafetyGuard::frontAppRisk(identifier, m_look.observation.window), DesktopDangers::pressRisk(m_place));
}

/// Of pressing what says this, whatever else is known of it.
ActionRisk LookRisk::ofLabel(std::string_view label, std::string_view role) const
{
    const std::string_view judged = label.substr(0, ObservationBounds::longestName);
    const JudgedText words(judged);
    ActionRisk risk = ActionRisk::strictest(tooLongRisk(label), SafetyGuard::risk(words, judged, role));
    // To focus a box does nothing yet.
    if (ElementRole::isTextEntry(role))
        return risk;
    // A link is safe to the guard whatever it says, since it leads elsewhere; what it says beside the name of a site
    // may still be a promise that something is done.
    if (SafetyGuard::isNavigationLink(judged, role)) {
        if (saysThatItActs(withoutSiteNames(judged)))
            risk = ActionRisk::strictest(std::move(risk), pressQuestion(judged));
    } else if (risk.isSafe()) {
        risk = wordsRisk(words, judged);
    }
    return ActionRisk::strictest(std::move(risk), DesktopDangers::labelRiskIn(m_place, judged));
}

ActionRisk LookRisk::ofLink(const AutomationCandidate& candidate, std::string_view address) const
{
    const auto target = LinkTarget::of(address, m_look.observation.page.value_or(""));
    if (!target)
        return ActionRisk::safe();
    if (!target->isWeb)
        return ActionRisk::askFirst(
            SpokenLabel::quoted(candidate.label) + " starts another program. Shall I press it?");
    return addressRisk(target->address);
}

/// "OK" does what the window says that it does.
ActionRisk LookRisk::ofAgreeing(const AutomationCandidate& candidate) const
{
    if (!DesktopDangers::isBareAgreement(candidate.label) && !ForeignWords::isBareAgreement(candidate.label))
        return ActionRisk::safe();
    constexpr std::size_t mostElements = 40; // A dialog has fewer, a page that speaks of many things more.
    constexpr std::size_t mostBytes = 2'048; // Of all that a dialog says.
    std::string said = m_look.observation.window.substr(0, mostBytes);
    if (m_look.observation.candidates.size() <= mostElements) {
        for (const AutomationCandidate& other : m_look.observation.candidates) {
            if (isText(other.role) && said.size() + other.label.size() <= mostBytes)
                said += "\n" + other.label;
        }
    }
    if (!isReadable(said))
        return ActionRisk::askFirst(
            "Shall I press " + SpokenLabel::quoted(candidate.label) + "? The window doesn't say what that agrees to.");
    if (!saysThatItActs(withoutSiteNames(said)))
        return ActionRisk::safe();
    return ActionRisk::askFirst("Shall I press " + SpokenLabel::quoted(candidate.label) + "? The window says "
        + SpokenLabel::quoted(said) + ".");
}

ActionRisk LookRisk::ofPressing(const AutomationCandidate& candidate) const
{
    if (candidate.secure)
        return SafetyGuard::risk("secure", candidate.role);
    const ScreenElement& element = elementOf(candidate);
    // A link that leads nowhere is a button of the page.
    const bool isButton =
        candidate.role == ElementRole::link && !element.address.empty() && !LinkTarget::of(element.address, "");
    const std::string_view role = isButton ? button : std::string_view(candidate.role);

    ActionRisk risk = ActionRisk::strictest(ofActing(), ofLabel(candidate.label, role));
    if (!isTextBox(candidate) && element.description != candidate.label)
        risk = ActionRisk::strictest(std::move(risk), ofLabel(element.description, role));
    const bool isNamed = isReadable(candidate.label) || isReadable(element.description);
    if (!isTextBox(candidate) && !isNamed)
        risk = ActionRisk::strictest(std::move(risk), ofLabel(candidate.value, role));
    if (!isTextBox(candidate) && !isNamed && !isReadable(candidate.value))
        risk = ActionRisk::strictest(std::move(risk),
            ActionRisk::askFirst("Shall I press something that has no name? I can't tell what it does."));
    risk = ActionRisk::strictest(std::move(risk), SafetyGuard::risk("", element.subrole));
    risk = ActionRisk::strictest(std::move(risk), ofLink(candidate, element.address));
    return ActionRisk::strictest(std::move(risk), ofAgreeing(candidate));
}

ActionRisk LookRisk::ofPressingAt(double x, double y) const
{
    ActionRisk risk = ofActing();
    constexpr std::size_t mostBytes = 8 * 1024; // Of all that lies over one another there.
    std::size_t bytes = 0;
    bool isKnown = false;
    const std::size_t known = std::min(m_look.elements.size(), m_look.observation.candidates.size());
    for (std::size_t place = 0; place < known; ++place) {
        const AutomationCandidate& candidate = m_look.observation.candidates[place];
        const auto& area = m_look.elements[place].area;
        if (!area || !area->contains(x, y) || isContainer(candidate.role))
            continue;
        isKnown = true;
        bytes += candidate.label.size() + m_look.elements[place].description.size() + 1;
        if (bytes > mostBytes)
            return ActionRisk::strictest(std::move(risk),
                ActionRisk::askFirst("Shall I click there? More lies at that place than I can check."));
        risk = ActionRisk::strictest(std::move(risk), ofPressing(candidate));
        if (risk.kind == ActionRisk::Case::never)
            break;
    }
    return isKnown ? risk
                   : ActionRisk::strictest(std::move(risk),
                       ActionRisk::askFirst("Shall I click there? I can't tell what is at that place."));
}

ActionRisk LookRisk::ofDragging(const screen_action::Drag& drag) const
{
    const ActionRisk risk = ActionRisk::strictest(ofPressingAt(drag.x, drag.y), ofPressingAt(drag.toX, drag.toY));
    const AutomationCandidate* from = m_look.elementAt(drag.x, drag.y);
    const AutomationCandidate* to = m_look.elementAt(drag.toX, drag.toY);
    if (from == to || !from || !to)
        return risk;
    return ActionRisk::strictest(risk,
        ActionRisk::askFirst(
            "Shall I drag " + SpokenLabel::quoted(from->label) + " to " + SpokenLabel::quoted(to->label) + "?"));
}

ActionRisk LookRisk::ofChoosing(const AutomationCandidate& candidate, std::string_view option) const
{
    return ActionRisk::strictest(ofPressing(candidate), ofLabel(option, menuItem));
}

ActionRisk LookRisk::ofMenu(const std::vector<std::string>& path) const
{
    ActionRisk risk = ofActing();
    std::string whole; // "Empty", "Trash" says what neither does.
    for (const std::string& item : path) {
        risk = ActionRisk::strictest(std::move(risk), ofLabel(item, menuItem));
        whole += whole.empty() ? item : ' ' + item;
    }
    return ActionRisk::strictest(std::move(risk), ofLabel(whole, menuItem));
}

} // namespace quorvell
