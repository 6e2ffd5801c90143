// SPDX-License-Identifier: MIT
#include "QuorvellCore/text/Base64.h"

#include <array>

namespace quorvell {

namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t noValue = 0x80; ///< No value of the alphabet has this bit, so a whole group is judged at once.

constexpr std::array<std::uint8_t, 256> makeValues()
{
    std::array<std::uint8_t, 256> values{};
    values.fill(noValue);
    for (std::size_t index = 0; index < alphabet.size(); ++index)
        values[static_cast<unsigned char>(alphabet[index])] = static_cast<std::uint8_t>(index);
    return values;
}

constexpr std::array<std::uint8_t, 256> values = makeValues();

std::uint8_t valueOf(char letter)
{
    return values[static_cast<unsigned char>(letter)];
}

/// The last group, which may end in one or two "=".
bool decodeLastGroup(std::string_view group, Bytes& bytes)
{
    const std::size_t padding = group[3] != '=' ? 0 : group[2] != '=' ? 1 : 2;
    std::uint32_t bits = 0;
    for (std::size_t index = 0; index < 4; ++index) {
        const std::uint8_t value = index + padding < 4 ? valueOf(group[index]) : 0;
        if (value == noValue)
            return false;
        bits = bits << 6 | value;
    }
    for (std::size_t index = 0; index + padding < 3; ++index)
        bytes.push_back(static_cast<std::uint8_t>(bits >> (16 - 8 * index)));
    return true;
}

} // namespace

std::string base64Encode(std::span<const std::uint8_t> bytes)
{
    std::string text((bytes.size() + 2) / 3 * 4, '=');
    char* out = text.data();
    std::size_t index = 0;
    for (; index + 3 <= bytes.size(); index += 3) {
        const std::uint32_t bits =
            std::uint32_t{bytes[index]} << 16 | std::uint32_t{bytes[index + 1]} << 8 | bytes[index + 2];
        *out++ = alphabet[bits >> 18];
        *out++ = alphabet[bits >> 12 & 63];
        *out++ = alphabet[bits >> 6 & 63];
        *out++ = alphabet[bits & 63];
    }
    if (index < bytes.size()) {
        const bool hasTwo = index + 1 < bytes.size();
        const std::uint32_t bits =
            std::uint32_t{bytes[index]} << 16 | (hasTwo ? std::uint32_t{bytes[index + 1]} << 8 : 0);
        *out++ = alphabet[bits >> 18];
        *out++ = alphabet[bits >> 12 & 63];
        if (hasTwo)
            *out++ = alphabet[bits >> 6 & 63];
    }
    return text;
}

std::optional<Bytes> base64Decode(std::string_view text)
{
    if (text.size() % 4 != 0)
        return std::nullopt;
    Bytes bytes;
    if (text.empty())
        return bytes;
    const std::size_t wholeGroups = text.size() / 4 - 1;
    bytes.resize(wholeGroups * 3);
    std::uint8_t* out = bytes.data();
    std::uint8_t seen = 0;
    for (std::size_t index = 0; index < wholeGroups * 4; index += 4) {
        const std::uint8_t first = valueOf(text[index]);
        const std::uint8_t second = valueOf(text[index + 1]);
        const std::uint8_t third = valueOf(text[index + 2]);
        const std::uint8_t fourth = valueOf(text[index + 3]);
        seen = static_cast<std::uint8_t>(seen | first | second | third | fourth);
        *out++ = static_cast<std::uint8_t>(first << 2 | second >> 4);
        *out++ = static_cast<std::uint8_t>(second << 4 | third >> 2);
        *out++ = static_cast<std::uint8_t>(third << 6 | fourth);
    }
    if ((seen & noValue) != 0 || !decodeLastGroup(text.substr(wholeGroups * 4), bytes))
        return std::nullopt;
    return bytes;
}

} // namespace quorvell
