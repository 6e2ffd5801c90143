// SPDX-License-Identifier: MIT
// The digits of any script as one number, up to 999,999,999.
#pragma once

#include <optional>
#include <string_view>

namespace quorvell {

/// Nothing for an empty text or another letter.
std::optional<int> decimalNumber(std::string_view digits);

} // namespace quorvell
