// SPDX-License-Identifier: MIT
// Whether the user plainly wants whatever runs to stop.
#pragma once

#include <string_view>

namespace quorvell {

/// "Stop", "no, wait", "cancel that please", and nothing besides: "stop the music" is a request like any other.
/// English; any thread.
bool isPlainStop(std::string_view said);

} // namespace quorvell
