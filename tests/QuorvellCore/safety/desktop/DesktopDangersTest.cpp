// SPDX-License-Identifier: MIT
// Catches commands that run though nobody heard them whole, and labels of this desktop that are pressed unasked.
#include "QuorvellCore/safety/desktop/DesktopDangers.h"

#include <gtest/gtest.h>

namespace quorvell {

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
