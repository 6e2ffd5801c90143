// SPDX-License-Identifier: MIT
// Catches bytes changed by base64, and texts taken that are none.
#include "QuorvellCore/text/Base64.h"

#include <gtest/gtest.h>

namespace quorvell {
namespace {

TEST(Base64, knownPairs)
{
    struct Row {
        Bytes bytes;
        const char* text;
    };
    const Row rows[] = {
        {{}, ""},
        {{'f'}, "Zg=="},
        {{'f', 'o'}, "Zm8="},
        {{'f', 'o', 'o'}, "Zm9v"},
        {{0xFB, 0xFF, 0xBF, 0x00}, "+/+/AA=="},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(base64Encode(row.bytes), row.text);
        EXPECT_EQ(base64Decode(row.text), row.bytes);
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

} // namespace
} // namespace quorvell
