// SPDX-License-Identifier: MIT
// The system's source of randomness.
#pragma once

#include <array>
#include <cstdint>

namespace quorvell {

/// Sixteen bytes from the system's source of randomness.
std::array<std::uint8_t, 16> randomBytes();

} // namespace quorvell
