// SPDX-License-Identifier: MIT
// How far a conversation has come.
#pragma once

namespace quorvell {

enum class SessionPhase {
    idle,
    connecting,
    active,
};

} // namespace quorvell
