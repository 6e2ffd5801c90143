// SPDX-License-Identifier: MIT
// Catches dangerous applications that pass for ordinary ones under another spelling of their name, and ordinary ones
// that are refused.
#include "QuorvellCore/safety/desktop/DesktopPlace.h"

#include "QuorvellCore/safety/desktop/DesktopDangers.h"

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

TEST(DesktopDangers, showsWholeWhatWouldRun)
{
    const auto kind = [](const std::string& text) {
        return DesktopDangers::typeRisk(DesktopPlace::terminal, text).kind;
    };
    EXPECT_EQ(kind(std::string(200, 'x')), ActionRisk::Case::askFirst);
    EXPECT_EQ(kind(std::string(201, 'x')), ActionRisk::Case::never);
    EXPECT_EQ(kind("ls\x1b[A"), ActionRisk::Case::never);
    EXPECT_EQ(kind("ls\nls"), ActionRisk::Case::askFirst);
}

TEST(DesktopDangers, asksAboutWordsOfThisDesktop)
{
    for (const char* label : {"Shut Down…", "_Uninstall", "Don't Save", "Don’t save", "Reply", "Book now", "Format…",
             "Order (2 items)", "Run Anyway", "Power off"})
        EXPECT_FALSE(DesktopDangers::labelRisk(label).isSafe()) << label;
    for (const char* label : {"Save", "Open…", "Zoom In", "Bold", "Next", "Books", "Reserved", "Runner's world",
             "Reset cookies", "Search", "Close", "Cancel", "View", "Help", "Bookmark this page", "Back", "Dark Mode"})
        EXPECT_TRUE(DesktopDangers::labelRisk(label).isSafe()) << label;
    EXPECT_TRUE(DesktopDangers::isBareAgreement("Yes, I'm sure!"));
    EXPECT_FALSE(DesktopDangers::isBareAgreement("OK computer"));
}

} // namespace quorvell
