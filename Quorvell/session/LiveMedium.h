#pragma once

namespace quorvell {

/// What a live connection carries.
enum class LiveMedium {
    voice, ///< Sound both ways; typed messages too.
    text, ///< Typed messages and written answers only.
};

} // namespace quorvell
