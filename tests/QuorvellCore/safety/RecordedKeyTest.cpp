// SPDX-License-Identifier: MIT
// Catches chords that are judged as another key than the one that is pressed.
#include "QuorvellCore/safety/RecordedKey.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(RecordedKey, isOneNameForAllSpellings)
{
    const struct {
        const char* written;
        const char* recorded;
    } rows[] = {
        {"Return", "return"},
        {"KP_Enter", "return"},
        {" Page_Down ", "page down"},
        {"PgUp", "page up"},
        {"BackSpace", "delete"},
        {" ", "space"},
        {"Esc", "escape"},
        {"ArrowLeft", "left"},
        {"F5", "f5"},
        {"é", "é"},
        {"ctrl+l", "command+l"},
        {"Ctrl + L", "command+l"},
        {"CTRL-L", "command+l"},
        {"cmd+Return", "command+return"},
        {"Ctrl+Shift+T", "command+shift+t"},
        {"shift+ctrl+alt+q", "command+option+shift+q"},
        {"control+command+q", "command+q"},
        {"ctrl++", "command+plus"},
        {"ctrl+=", "command+plus"},
        {"ctrl+-", "command+minus"},
        {"-", "minus"},
        {"+", "plus"},
        {"alt+F4", "option+f4"},
        {"_", "_"},
        {"ctrl+_", "command+_"},
        // No key, or more than one
        {"", "-"},
        {"super+l", "-"},
        {"_n", "-"},
        {"ctrl+", "-"},
        {"a+b", "-"},
        {"ctrl+k ctrl+c", "-"},
        {"ctrl+l\nReturn", "-"},
        {"ｃtrl+w", "-"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(recordedKey(row.written).value_or("-"), row.recorded) << row.written;
    EXPECT_FALSE(recordedKey(std::string(1000, 'x')));
}

} // namespace quorvell
