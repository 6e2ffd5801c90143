// SPDX-License-Identifier: MIT
// Catches dangerous applications that pass for ordinary ones under another spelling of their name, and ordinary ones
// that are refused.
#include "QuorvellCore/safety/places/DesktopPlace.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(DesktopPlace, isKnownByNameIdentifierOrTitle)
{
    using enum DesktopPlace;
    const struct {
        const char* app;
        const char* identifier;
        const char* title;
        DesktopPlace place;
    } rows[] = {
        {"Firefox", "firefox", "ann@home.example: inbox", ordinary},
        {"", "", "ann@garden: ~/letters", terminal},
        {"", "", "Meeting: 5 pm", ordinary},
        {"Whatever", "org.gnome.Terminal.desktop", "", terminal},
        {"gnome-terminal-server", "", "", terminal},
        {"/usr/bin/XTerm", "", "", terminal},
        {"sh -c ls", "", "", terminal},
        {"sudo reboot", "", "", terminal},
        {"Terminal velocity", "", "", ordinary},
        {"KRunner", "", "", runDialog},
        {"cinnamon", "", "Run Program", runDialog},
        {"Text Editor", "", "Run: notes", ordinary},
        {"", "polkit-gnome-authentication-agent-1", "", authentication},
        {"pinentry-gnome3", "", "", authentication},
        {"Firefox", "", "Authentication Required - Mozilla Firefox", authentication},
        {"gnome-shell", "", "Unlock Login Keyring", authentication},
        {"Authentication guide", "", "", ordinary},
        {"Passwords and Keys", "", "", passwordManager},
        {"Software", "org.gnome.Software", "", installer},
        {"Disks", "", "", systemTool},
        {"Mouse", "xfce4-mouse-settings", "", settings},
        {"mate-mouse-properties", "", "", settings},
        {"Remmina", "", "", otherComputer},
        {"AnyDesk 6", "", "", letsOthersIn},
        {"plasmashell", "", "", shell},
        {"Thunar", "", "", fileManager},
        {"Element", "", "", messenger},
    };
    for (const auto& row : rows)
        EXPECT_EQ(desktopPlace(row.app, row.identifier, row.title), row.place)
            << row.app << row.identifier << row.title;
}

} // namespace quorvell
