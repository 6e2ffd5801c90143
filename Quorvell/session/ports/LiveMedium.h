// SPDX-License-Identifier: MIT
// What a live connection carries.
#pragma once

namespace quorvell {

enum class LiveMedium {
    voice, ///< Sound both ways; typed messages too.
    text, ///< Typed messages and written answers only.
};

} // namespace quorvell
