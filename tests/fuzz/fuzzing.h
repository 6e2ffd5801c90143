// SPDX-License-Identifier: MIT
// What every search for crashes is made of: it gives any bytes as a text to the one function that its file defines.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace quorvell {

/// Ends the search; its input is kept.
inline void require(bool holds)
{
    if (!holds)
        std::abort();
}

/// What holds of every text.
void search(std::string_view text);

} // namespace quorvell

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    quorvell::search({reinterpret_cast<const char*>(data), size});
    return 0;
}
