// SPDX-License-Identifier: MIT
// Catches patterns that match at the wrong bytes, or take without end on hostile text.
#include "QuorvellCore/text/Pattern.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(Pattern, tellsBytesOfUtf8)
{
    const Pattern pattern(R"((🎂)?(é+)(x)?)");
    const std::string text = "aaéé 🎂éx";
    const auto first = pattern.find(text);
    ASSERT_TRUE(first);
    EXPECT_EQ(first->range, (TextRange{2, 6}));
    EXPECT_FALSE(first->groups[0]);
    EXPECT_EQ(first->texts[0], "");
    EXPECT_EQ(first->texts[1], "éé");
    const auto second = pattern.find(text, first->range.end);
    ASSERT_TRUE(second);
    EXPECT_EQ(second->groups[0], (TextRange{7, 11}));
    EXPECT_EQ(second->range, (TextRange{7, text.size()}));
    EXPECT_EQ(pattern.findAll(text).size(), 2U);
    EXPECT_FALSE(pattern.find(text, text.size()));
}

TEST(Pattern, looksBehindItsStart)
{
    const Pattern pattern(R"(\bword)");
    EXPECT_FALSE(pattern.find("sword", 1));
    EXPECT_TRUE(pattern.find("a word", 2));
    EXPECT_FALSE(pattern.find("éword", 2));
}

TEST(Pattern, comparesAndReplaces)
{
    EXPECT_TRUE(Pattern("^gr(ü|ue)n$", Pattern::Case::insensitive).find("GRÜN"));
    EXPECT_FALSE(Pattern("^grün$").find("GRÜN"));
    EXPECT_EQ(Pattern(R"(\d+)").replaceAll("a1é22", "$0"), "a$0é$0");
    EXPECT_EQ(Pattern("x*").replaceAll("ab", "-"), "-a-b-");
}

TEST(Pattern, outlivesFaultsAndHostility)
{
    const Pattern faulty("(");
    EXPECT_FALSE(faulty.isValid());
    EXPECT_FALSE(faulty.find("("));
    EXPECT_TRUE(faulty.findAll("((").empty());

    EXPECT_FALSE(Pattern("^(a+)+$").find(std::string(200, 'a') + "b"));
    EXPECT_FALSE(Pattern("^(a|b)*$").find(std::string(5'000'000, 'a') + "c")); // More backtracking than is allowed.
    EXPECT_TRUE(Pattern("b").find("\xFF\xFE b \x80"));
}

} // namespace quorvell
