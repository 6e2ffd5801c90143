// SPDX-License-Identifier: MIT
// Catches text that is read past its end or beyond what was asked.
#include "QuorvellCore/text/TextReader.h"

#include <gtest/gtest.h>

#include <string>

namespace quorvell {

/// "name=12;" with a name of any length and a number of one to three digits from 5 to 200.
TEST(TextReader, saysOnceWhetherEverythingFits)
{
    struct Row {
        const char* text;
        bool isFine;
        int number;
    };
    const Row rows[] = {
        {"a=5;", true, 5},
        {"=200;", true, 200},
        {"a=012;", true, 12},
        {"a=4;", false, 0},
        {"a=201;", false, 0},
        {"a=0012;", false, 0},
        {"a=;", false, 0},
        {"a=12", false, 12},
        {"a", false, 0},
        {"", false, 0},
        {"a12;", false, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        TextReader reader(row.text);
        const std::string name(reader.until("="));
        reader.skip('=');
        EXPECT_EQ(reader.number({1, 3}, {5, 200}), row.number);
        reader.skip(';');
        EXPECT_EQ(reader.isFine() && reader.isAtEnd(), row.isFine);
    }
    TextReader manyDigits("99999999999999999999999999");
    EXPECT_EQ(manyDigits.number({1, 99}, {0, 9999}), 0);
    EXPECT_FALSE(manyDigits.isFine());
}

} // namespace quorvell
