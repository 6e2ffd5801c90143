// SPDX-License-Identifier: MIT
// Why a connection takes up the conversation.
#pragma once

namespace quorvell {

enum class Arrival {
    first, ///< A conversation begins.
    woken, ///< It goes on after a rest.
    mended, ///< The line was lost.
    rotated, ///< The line was replaced at a quiet moment.
};

} // namespace quorvell
