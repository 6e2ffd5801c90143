// SPDX-License-Identifier: MIT
// Catches characters miscounted, cut apart, or repaired wrongly.
#include "QuorvellCore/text/Characters.h"

#include "QuorvellCore/text/LowerCase.h"
#include "QuorvellCore/text/TextMatch.h"

#include <gtest/gtest.h>

#include <tuple>

namespace quorvell {

TEST(Characters, countsWhatPeopleSee)
{
    const std::tuple<const char*, std::size_t, const char*> rows[] = {{"", 0, ""}, {"abc", 3, "ab"},
        {"e\u0301a\u0308x", 3, "e\u0301a\u0308"}, {"a\u0301", 1, "a\u0301"},
        {"👩‍👩‍👧🇩🇪x", 3, "👩‍👩‍👧🇩🇪"}, {"\r\na\nb", 4, "\r\na"},
        {"a\r\nb", 3, "a\r\n"}};
    for (const auto& [text, count, firstTwo] : rows) {
        SCOPED_TRACE(text);
        EXPECT_EQ(characterCount(text), count);
        EXPECT_EQ(firstCharacters(text, 2), firstTwo);
        EXPECT_EQ(firstCharacters(text, 100), text);
        EXPECT_EQ(firstCharacters(text, 0), "");
    }
}

TEST(Characters, repairsEveryIllFormedSequenceOnce)
{
    const std::pair<const char*, const char*> rows[] = {{"plain é 🎂", "plain é 🎂"}, {"a\xff z", "a\uFFFD z"},
        {"cut \xF0\x9F\x8E", "cut \uFFFD"}, {"\xC0\xAF", "\uFFFD\uFFFD"}, {"\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"},
        {"\x80x", "\uFFFDx"}};
    for (const auto& [text, repaired] : rows)
        EXPECT_EQ(repairUtf8(text), repaired);
}

TEST(Characters, trims)
{
    EXPECT_EQ(trimmed(" \t\u00A0\u2003word \n\r\u2028"), "word");
    EXPECT_EQ(trimmed(" \u3000 "), "");
    EXPECT_EQ(trimmed(".;: a, b!? ", ",.;:!"), "a, b!?");
    EXPECT_EQ(trimmed("…« x »…", "…«»"), "x");
    EXPECT_EQ(trimmed("\xFF a \xFF"), "\xFF a \xFF");
}

TEST(Characters, raisesTheFirst)
{
    EXPECT_EQ(withUpperCaseFirst("call mum"), "Call mum");
    EXPECT_EQ(withUpperCaseFirst("e\u0301tude"), "E\u0301tude");
    EXPECT_EQ(withUpperCaseFirst("ßig"), "SSig");
    EXPECT_EQ(withUpperCaseFirst("ill"), "Ill");
    EXPECT_EQ(withUpperCaseFirst("🎂 cake"), "🎂 cake");
    EXPECT_EQ(withUpperCaseFirst(""), "");
}

TEST(LowerCase, ofNamesOfProtocolsChangesNoOtherLetters)
{
    EXPECT_EQ(asciiLowerCased("Opus/48000 [@Z`{] \xC3\x84"), "opus/48000 [@z`{] \xC3\x84");
}

TEST(LowerCase, knowsWhereItsLettersCameFrom)
{
    // İ becomes two code points (2 to 3 bytes), ẞ a shorter one (3 to 2), and K (the Kelvin sign, 3 bytes) one byte.
    const std::string input = "aİẞ\u212A é";
    const LowerCasedText lower(input);
    EXPECT_EQ(lower.text(), "ai\u0307ßk é");
    for (const auto& [word, source] :
        {std::pair{"a", "a"}, {"i\u0307", "İ"}, {"ß", "ẞ"}, {"k", "\u212A"}, {" é", " é"}, {"ßk", "ẞ\u212A"}}) {
        SCOPED_TRACE(word);
        const std::size_t start = lower.text().find(word);
        const std::size_t from = lower.inputPosition(start);
        EXPECT_EQ(input.substr(from, lower.inputEndPosition(start + std::string(word).size()) - from), source);
    }
    // The dot alone belongs to the whole letter.
    const std::size_t dot = lower.text().find("\u0307");
    EXPECT_EQ(lower.inputPosition(dot), 1U);
    EXPECT_EQ(lower.inputEndPosition(dot), 3U);
    EXPECT_EQ(lower.inputPosition(lower.text().size()), input.size());
    EXPECT_EQ(LowerCasedText("ABC").inputEndPosition(2), 2U);
    EXPECT_EQ(lowerCased("ΟΔΟΣ I İ"), "οδος i i\u0307");
}

TEST(TextMatch, normalizes)
{
    const std::pair<const char*, const char*> rows[] = {{"  Don't  STOP! ", "don't stop"},
        {"Ärger—mit\u00A0Ñandú", "ärger mit ñandú"}, {"e\u0301te\u0301", "e\u0301te\u0301"}, {"a_b-c.d", "a b c d"},
        {"½ Ⅷ ٣ 五", "½ ⅷ ٣ 五"}, {"’quoted‘", "quoted"}, {"🎂", ""}, {"", ""}, {"''", "''"}};
    for (const auto& [text, normalized] : rows)
        EXPECT_EQ(TextMatch::normalized(text), normalized) << text;
}

} // namespace quorvell
