// SPDX-License-Identifier: MIT
// What the guard says of each single thing that an action may do on one look. Internal to this folder's sources.
#pragma once

#include "QuorvellCore/automation/surface/ScreenAction.h"
#include "QuorvellCore/automation/surface/ScreenLook.h"
#include "QuorvellCore/safety/ActionRisk.h"
#include "QuorvellCore/safety/places/DesktopPlace.h"

#include <string>
#include <string_view>
#include <vector>

namespace quorvell {

/// Looks at a screen that outlives it. Each function gives the strictest of what it names.
class LookRisk {
public:
    explicit LookRisk(const ScreenLook& look);

    /// Of acting in the application in front at all.
    ActionRisk ofActing() const;
    ActionRisk ofPressing(const AutomationCandidate& candidate) const;
    /// Of pressing whatever is at this place; asked about where nothing is known to be there.
    ActionRisk ofPressingAt(double x, double y) const;
    ActionRisk ofDragging(const screen_action::Drag& drag) const;
    ActionRisk ofChoosing(const AutomationCandidate& candidate, std::string_view option) const;
    ActionRisk ofMenu(const std::vector<std::string>& path) const;
    /// `isAdded`: behind what stands there.
    ActionRisk ofTyping(const AutomationCandidate& candidate, const std::string& text, bool isAdded) const;
    /// By its recorded name.
    ActionRisk ofKey(std::string_view key) const;

private:
    const ScreenElement& elementOf(const AutomationCandidate& candidate) const;
    bool hasAuthenticationHeading() const;
    ActionRisk ofLabel(std::string_view label, std::string_view role) const;
    ActionRisk ofLink(const AutomationCandidate& candidate, std::string_view address) const;
    ActionRisk ofAgreeing(const AutomationCandidate& candidate) const;
    ActionRisk ofText(std::string_view text) const;
    ActionRisk ofField(const AutomationCandidate& candidate, const std::string& text, bool isAdded) const;
    ActionRisk ofReturn(const AutomationCandidate& candidate, std::string_view value) const;
    ActionRisk ofReturnInBox(const AutomationCandidate& candidate, std::string_view value) const;
    ActionRisk ofSubmitting(const AutomationCandidate& box) const;
    ActionRisk ofDefaultButtons() const;
    ActionRisk ofKeyOnFocus(std::string_view key) const;

    const ScreenLook& m_look;
    DesktopPlace m_place;
};

} // namespace quorvell
