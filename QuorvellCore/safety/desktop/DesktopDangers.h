// SPDX-License-Identifier: MIT
// What is dangerous on this desktop whatever is pressed in it: applications, their windows, and words of its own.
//
// Facts about Linux desktops. An application is known by its name, by the identifier under which the desktop knows it,
// and some windows by their title.
#pragma once

#include "QuorvellCore/safety/ActionRisk.h"
#include "QuorvellCore/safety/places/DesktopPlace.h"

#include <string_view>

namespace quorvell {

class JudgedText;

/// Functions of their arguments; any thread.
struct DesktopDangers {
    /// Of opening an application or bringing it forward, by its name.
    static ActionRisk openRisk(std::string_view app);
    /// Of pressing anything there, by mouse, key or menu. Settings are judged by SafetyGuard::frontAppRisk.
    static ActionRisk pressRisk(DesktopPlace place);
    /// Of typing this text there.
    static ActionRisk typeRisk(DesktopPlace place, std::string_view text);
    /// Of Return there.
    static ActionRisk returnRisk(DesktopPlace place);
    /// Of pressing something with this label there: "Paste" in a terminal, a file in a file manager.
    static ActionRisk labelRiskIn(DesktopPlace place, std::string_view label);

    /// A field in an ordinary application behind which commands run: the console of an editor or of a browser.
    static bool isCommandField(std::string_view label);
    /// A label whose words do what cannot be taken back, beyond those that SafetyGuard knows: "Shut Down", "Uninstall".
    static ActionRisk labelRisk(std::string_view label);
    /// The same for a label that was made ready already.
    static ActionRisk labelRisk(const JudgedText& words, std::string_view label);
    /// A label that only agrees to what stands elsewhere: "OK", "Yes", "Continue".
    static bool isBareAgreement(std::string_view label);
};

} // namespace quorvell
