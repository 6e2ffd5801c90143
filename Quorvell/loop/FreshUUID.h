// SPDX-License-Identifier: MIT
// A new random UUID (version 4) as text; any thread.
#pragma once

#include <string>

namespace quorvell {

std::string freshUUID();

} // namespace quorvell
