// SPDX-License-Identifier: MIT
// Gives a fresh id that begins with `prefix` ("resp_").
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace quorvell {

/// Passed in, so that a conversation can be replayed exactly.
using IdSource = std::function<std::string(std::string_view prefix)>;

} // namespace quorvell
