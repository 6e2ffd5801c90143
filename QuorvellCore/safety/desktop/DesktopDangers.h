// SPDX-License-Identifier: MIT
// What is dangerous on this desktop whatever is pressed in it: applications, their windows, and words of its own.
//
// Facts about Linux desktops. An application is known by its name, by the identifier under which the desktop knows it,
// and where neither tells, by the title of its window.
#pragma once

#include "QuorvellCore/safety/ActionRisk.h"

#include <string_view>

namespace quorvell {

enum class DesktopPlace {
    ordinary,
    terminal, ///< What is typed there runs.
    runDialog, ///< Likewise, once Return is pressed.
    authentication, ///< Asks for the user's password, or unlocks something.
    passwordManager,
    installer, ///< Package installers and software centres.
    systemTool, ///< Disks, services, boot, other people's accounts.
    settings,
    otherComputer, ///< Shows or lets in another computer: nothing that is pressed there can be seen from here.
    letsOthersIn,
    shell, ///< Panels, docks, launchers: what is pressed there opens something.
    fileManager, ///< What is pressed there may be opened.
};

/// Functions of their arguments; any thread.
struct DesktopDangers {
    /// Of the application in front. Any of the three may be empty.
    static DesktopPlace placeOf(std::string_view app, std::string_view identifier, std::string_view windowTitle);
    static DesktopPlace placeOfApp(std::string_view name);
    /// A window that asks for a password, by its title or by the heading in it.
    static bool asksToAuthenticate(std::string_view title);

    /// Of opening it or bringing it forward.
    static ActionRisk openRisk(std::string_view app);
    /// Of pressing anything there, by mouse, key or menu. Settings are judged by SafetyGuard::frontAppRisk.
    static ActionRisk pressRisk(DesktopPlace place);
    /// Of typing this text there.
    static ActionRisk typeRisk(DesktopPlace place, std::string_view text);
    /// A field in an ordinary application behind which commands run: the console of an editor or of a browser.
    static bool isCommandField(std::string_view label);

    /// A label whose words do what cannot be taken back, beyond those that SafetyGuard knows: "Shut Down", "Uninstall".
    static ActionRisk labelRisk(std::string_view label);
    /// A label that only agrees to what stands elsewhere: "OK", "Yes", "Continue".
    static bool isBareAgreement(std::string_view label);
};

} // namespace quorvell
