// SPDX-License-Identifier: MIT
// The rest state of an active conversation.
#pragma once

namespace quorvell {

enum class Doze {
    awake, ///< A live connection is open, or being mended.
    dozing, ///< Hung up; the recogniser on the device listens.
    waking, ///< Connecting again, because words were heard or typed.
};

} // namespace quorvell
