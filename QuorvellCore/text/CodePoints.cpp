// SPDX-License-Identifier: MIT
#include "QuorvellCore/text/CodePoints.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace quorvell {

namespace {

/// No sequence is longer, so a window of this size around a position is all that has to be shown to ICU, whose
/// lengths are 32 bits wide.
constexpr std::size_t longestSequence = 4;

} // namespace

char32_t nextCodePoint(std::string_view text, std::size_t& position)
{
    const std::string_view window = text.substr(position, longestSequence);
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(window.data());
    const auto length = static_cast<std::int32_t>(window.size());
    std::int32_t index = 0;
    UChar32 codePoint = 0;
    U8_NEXT_OR_FFFD(bytes, index, length, codePoint);
    position += static_cast<std::size_t>(index);
    return static_cast<char32_t>(codePoint);
}

char32_t previousCodePoint(std::string_view text, std::size_t& position)
{
    const std::size_t start = position > longestSequence ? position - longestSequence : 0;
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data() + start);
    auto index = static_cast<std::int32_t>(position - start);
    UChar32 codePoint = 0;
    U8_PREV_OR_FFFD(bytes, 0, index, codePoint);
    position = start + static_cast<std::size_t>(index);
    return static_cast<char32_t>(codePoint);
}

/// Eight bytes at a time: whole files are nothing else, and all of them are looked at.
bool isAscii(std::string_view text)
{
    constexpr std::uint64_t highBits = 0x8080808080808080U;
    std::size_t position = 0;
    for (; position + sizeof(std::uint64_t) <= text.size(); position += sizeof(std::uint64_t)) {
        std::uint64_t bytes = 0;
        std::memcpy(&bytes, text.data() + position, sizeof(bytes));
        if ((bytes & highBits) != 0)
            return false;
    }
    return std::all_of(text.begin() + static_cast<std::ptrdiff_t>(position), text.end(),
        [](char letter) { return static_cast<unsigned char>(letter) < 0x80; });
}

bool isWhiteSpace(char32_t codePoint)
{
    return u_isUWhiteSpace(static_cast<UChar32>(codePoint));
}

} // namespace quorvell
