// SPDX-License-Identifier: MIT
// Catches keys and others' words where they must not be, and text that is seen otherwise than it is.
#include "QuorvellCore/text/CodeWord.h"
#include "QuorvellCore/text/PrintableText.h"
#include "QuorvellCore/text/Secrets.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(PrintableText, readsInTheOrderInWhichItIsWritten)
{
    for (const char* turning :
        {"\u061C", "\u200E", "\u200F", "\u2028", "\u202A", "\u202E", "\u2066", "\u2069", "\xC2\x9B", "\x1b"})
        EXPECT_EQ(printableText(std::string("a") + turning + "b"), "ab") << turning;
    for (const char* kept : {"שלום", "👩‍🚀", "é\u00A0\u00B6", "a\n\tb", "“…”"})
        EXPECT_EQ(printableText(kept), kept);
}

TEST(Secrets, standNowhere)
{
    const Secrets secrets{{"sk-12345678", "short", "12345678"}};
    EXPECT_EQ(
        secrets.blanked("Bad key sk-12345678, sk-12345678! 123456789 short"), "Bad key (key), (key)! (key)9 short");
}

TEST(CodeWord, keepsNoWords)
{
    for (const char* code : {"", "rate_limit_exceeded", "resp_0aB-9", "1013", "gpt.4:x"})
        EXPECT_EQ(codeWord(code), code);
    for (const std::string& words :
        {std::string("my cat died"), std::string(65, 'x'), std::string("sess\n1"), std::string("né")})
        EXPECT_EQ(codeWord(words), "other");
}

} // namespace quorvell
