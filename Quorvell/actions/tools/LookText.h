// SPDX-License-Identifier: MIT
// A look at the screen in words for the model.
#pragma once

#include "QuorvellCore/automation/surface/ScreenLook.h"

#include <cstddef>
#include <string>

namespace quorvell {

/// Each element stands on a line of its own, its texts in quotes and cut, so that none can pass for another. Values
/// that look like a secret are left out. To be fenced before a model gets it, for others wrote what it quotes.
struct LookText {
    /// How much is told: after every action less than where a look was asked for.
    struct Extent {
        std::size_t mostElements;
        std::size_t mostBytes;
    };
    static constexpr Extent whole{400, 48 * 1024};
    static constexpr Extent brief{120, 12 * 1024};

    static constexpr std::size_t longestLabel = 200; ///< User-perceived characters, as are those below.
    static constexpr std::size_t longestValue = 500;
    static constexpr std::size_t mostMenus = 300; ///< Commands.

    static std::string of(const ScreenLook& look, Extent extent = whole);
};

} // namespace quorvell
