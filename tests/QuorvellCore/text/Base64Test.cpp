// SPDX-License-Identifier: MIT
// Catches bytes changed by base64, and texts taken that are none.
#include "QuorvellCore/text/Base64.h"

#include <gtest/gtest.h>

namespace quorvell {

TEST(Base64, knownPairs)
{
    const std::pair<Bytes, const char*> rows[] = {{{}, ""}, {{'f'}, "Zg=="}, {{'f', 'o'}, "Zm8="},
        {{'f', 'o', 'o'}, "Zm9v"}, {{0xFB, 0xFF, 0xBF, 0x00}, "+/+/AA=="}};
    for (const auto& [bytes, text] : rows) {
        SCOPED_TRACE(text);
        EXPECT_EQ(base64Encode(bytes), text);
        EXPECT_EQ(base64Decode(text), bytes);
    }
}

TEST(Base64, everyByteAtEveryPlaceComesBack)
{
    for (std::size_t size = 0; size < 600; ++size) {
        Bytes bytes(size);
        for (std::size_t index = 0; index < size; ++index)
            bytes[index] = static_cast<std::uint8_t>(index * 7 + size);
        ASSERT_EQ(base64Decode(base64Encode(bytes)), bytes) << size;
    }
}

TEST(Base64, refuses)
{
    for (const char* text : {"Z", "Zg=", "Zg", "Zg==Zg==", "Z===", "====", "Zg= ", "Zm9v\n", "Zm-_", "=Zg=", "Zg=a",
             "Zm9*Zm9v", "Zm9v\xC3\xA9  "})
        EXPECT_EQ(base64Decode(text), std::nullopt) << text;
}

} // namespace quorvell
