// SPDX-License-Identifier: MIT
// How long a busy service asks to be left alone.
#pragma once

#include <chrono>
#include <optional>
#include <string_view>

namespace quorvell {

/// Of a field "Retry-After": a number of seconds, or a date. A day at most: whoever asks for more means never.
std::optional<std::chrono::milliseconds> retryAfter(std::string_view field);

} // namespace quorvell
