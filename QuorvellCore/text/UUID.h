// SPDX-License-Identifier: MIT
// The text of a random UUID, lower case with its dashes.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace quorvell {

/// `randomBytes` are its 16 bytes before its version and variant bits are set.
std::string uuidText(const std::array<std::uint8_t, 16>& randomBytes);

} // namespace quorvell
