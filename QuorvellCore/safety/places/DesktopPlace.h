// SPDX-License-Identifier: MIT
// The kinds of applications and windows in which an action means more than its label says.
#pragma once

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
    otherComputer, ///< Shows another computer: what is pressed there cannot be seen from here.
    letsOthersIn,
    shell, ///< Panels, docks, launchers: what is pressed there opens something.
    fileManager, ///< What is pressed there may be opened.
    messenger, ///< Return sends.
};

/// Of the application in front. Any of the three may be empty.
DesktopPlace desktopPlace(std::string_view app, std::string_view identifier, std::string_view windowTitle);
/// Of an application by its name or its identifier.
DesktopPlace desktopPlaceOfApp(std::string_view name);
/// A window that asks for a password, by its title or by a heading in it.
bool asksToAuthenticate(std::string_view title);

} // namespace quorvell
