// SPDX-License-Identifier: MIT
#include "Quorvell/loop/FreshUUID.h"

#include <random>

namespace quorvell {

std::string freshUUID()
{
    constexpr char digits[] = "0123456789abcdef";
    std::random_device source;
    std::string text = "xxxxxxxx-xxxx-4xxx-yxxx-xxxxxxxxxxxx";
    for (char& place : text) {
        const auto digit = static_cast<std::size_t>(source() & 0xFU);
        if (place == 'x')
            place = digits[digit];
        else if (place == 'y')
            place = digits[8U | (digit & 3U)];
    }
    return text;
}

} // namespace quorvell
