#pragma once

#include <cstdint>
#include <vector>

namespace quorvell {

/// Raw bytes: PCM samples (16-bit little-endian), pictures, undecoded messages.
using Bytes = std::vector<std::uint8_t>;

} // namespace quorvell
