// SPDX-License-Identifier: MIT
// How far a conversation has come.
// How far a conversation has come, as everybody outside of it sees it.
#pragma once

namespace quorvell {

enum class SessionPhase {
    idle,
    connecting,
    active,
};

} // namespace quorvell
