// SPDX-License-Identifier: MIT
// Raw bytes: PCM samples (16-bit little-endian), pictures, undecoded messages.
#pragma once

#include <cstdint>
#include <vector>

namespace quorvell {

using Bytes = std::vector<std::uint8_t>;

} // namespace quorvell
