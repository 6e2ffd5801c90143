// SPDX-License-Identifier: MIT
// Bytes as base64 (standard alphabet with padding) and back.
#pragma once

#include "QuorvellCore/text/Bytes.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quorvell {

std::string base64Encode(std::span<const std::uint8_t> bytes);

/// Strict: nothing for a wrong length, alphabet or padding. The empty text gives no bytes.
std::optional<Bytes> base64Decode(std::string_view text);

} // namespace quorvell
