// SPDX-License-Identifier: MIT
#pragma once

namespace quorvell {

enum class SessionPhase {
    idle,
    connecting,
    active,
};

} // namespace quorvell
