// SPDX-License-Identifier: MIT
// Catches text that runs over a terminal's edge, and words cut where they need not be.
#include "QuorvellCore/text/ColumnText.h"

#include <gtest/gtest.h>

#include <tuple>

namespace quorvell {

TEST(ColumnText, countsWhatATerminalNeeds)
{
    const std::tuple<const char*, std::size_t, const char*> rows[] = {{"", 0, ""}, {"abcd", 4, "abc"},
        {"日本語", 6, "日"}, {"e\u0301te\u0301", 3, "e\u0301te\u0301"}, {"a👍b", 4, "a👍"}, {"한국", 4, "한"},
        {"\u200Bx\x01", 1, "\u200Bx\x01"}, {"\xFF\xFF", 2, "\xFF\xFF"}};
    for (const auto& [text, columns, firstThree] : rows) {
        EXPECT_EQ(columnsOf(text), columns) << text;
        EXPECT_EQ(firstColumns(text, 3), firstThree) << text;
    }
}

TEST(ColumnText, breaksBetweenWordsOnly)
{
    const std::tuple<const char*, const char*, std::size_t, const char*> rows[] = {
        {"fits", "ten  wide.", 0, "ten  wide."},
        {"two lines", "remind me of it", 0, "remind me\nof it"},
        {"below the start of the line", "  one two three", 2, "  one two\n    three"},
        {"its own lines stay", "a\n\n- b\n", 0, "a\n\n- b\n"},
        {"a word that fits no line", "see https://example.org now", 0, "see\nhttps://example.org\nnow"},
        {"wide characters", "あ い う え お", 0, "あ い う\nえ お"},
        {"spaces at the end go", "0123456789   ", 0, "0123456789"},
        {"a tab", "a\tb", 0, "a    b"},
    };
    for (const auto& [name, text, indent, wrapped] : rows)
        EXPECT_EQ(wrappedToColumns(text, 10, indent), wrapped) << name;
}

} // namespace quorvell
