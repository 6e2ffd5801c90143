// SPDX-License-Identifier: MIT
// Catches text that runs over a terminal's edge, and words cut where they need not be.
#include "QuorvellCore/text/ColumnText.h"

#include <gtest/gtest.h>

namespace quorvell {
namespace {

TEST(ColumnText, countsWhatATerminalNeeds)
{
    struct Row {
        const char* text;
        std::size_t columns;
        const char* firstThree;
    };
    const Row rows[] = {{"", 0, ""}, {"abcd", 4, "abc"}, {"日本語", 6, "日"}, {"e\u0301te\u0301", 3, "e\u0301te\u0301"},
        {"a👍b", 4, "a👍"}, {"한국", 4, "한"}, {"\u200Bx\x01", 1, "\u200Bx\x01"}, {"\xFF\xFF", 2, "\xFF\xFF"}};
    for (const Row& row : rows) {
        EXPECT_EQ(columnsOf(row.text), row.columns) << row.text;
        EXPECT_EQ(firstColumns(row.text, 3), row.firstThree) << row.text;
    }
}

TEST(ColumnText, breaksBetweenWordsOnly)
{
    struct Row {
        const char* name;
        const char* text;
        std::size_t indent;
        const char* wrapped;
    };
    const Row rows[] = {
        {"fits", "ten  wide.", 0, "ten  wide."},
        {"two lines", "remind me of it", 0, "remind me\nof it"},
        {"below the start of the line", "  one two three", 2, "  one two\n    three"},
        {"its own lines stay", "a\n\n- b\n", 0, "a\n\n- b\n"},
        {"a word that fits no line", "see https://example.org now", 0, "see\nhttps://example.org\nnow"},
        {"wide characters", "あ い う え お", 0, "あ い う\nえ お"},
        {"spaces at the end go", "0123456789   ", 0, "0123456789"},
        {"a tab", "a\tb", 0, "a    b"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(wrappedToColumns(row.text, 10, row.indent), row.wrapped) << row.name;
}

} // namespace
} // namespace quorvell
