// SPDX-License-Identifier: MIT
#include "QuorvellCore/text/UUID.h"

#include <string_view>

namespace quorvell {

std::string uuidText(const std::array<std::uint8_t, 16>& randomBytes)
{
    // A random UUID says version 4 in byte 6 and its variant in byte 8.
    std::array<std::uint8_t, 16> uuid = randomBytes;
    uuid[6] = static_cast<std::uint8_t>((uuid[6] & 0x0F) | 0x40);
    uuid[8] = static_cast<std::uint8_t>((uuid[8] & 0x3F) | 0x80);
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (std::size_t index = 0; index < uuid.size(); ++index) {
        if (index == 4 || index == 6 || index == 8 || index == 10)
            text += '-';
        text += digits[uuid[index] >> 4];
        text += digits[uuid[index] & 0x0F];
    }
    return text;
}

} // namespace quorvell
