// SPDX-License-Identifier: MIT
#include "Quorvell/files/RandomBytes.h"

#include <sys/random.h>

#include <cstdlib>

namespace quorvell {

std::array<std::uint8_t, 16> randomBytes()
{
    std::array<std::uint8_t, 16> bytes{};
    // So few bytes come whole, and always once the system has started. Without them ids could clash unseen.
    if (::getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size()))
        std::abort();
    return bytes;
}

} // namespace quorvell
