// SPDX-License-Identifier: MIT
// Whether the model has read text that others wrote, and until when that counts.
#pragma once

#include "QuorvellCore/automation/proposals/WordOrigin.h"
#include "QuorvellCore/text/Instant.h"

#include <chrono>
#include <optional>

namespace quorvell {

/// A value; lives with the conversation.
struct ScreenTaint {
    /// As long as one session of a hosted model lasts, in whose memory the text stays.
    static constexpr std::chrono::minutes lasts{60};

    std::optional<Instant> screenTaintedUntil{};

    /// The model was given text of this origin.
    void told(WordOrigin origin, Instant now)
    {
        if (isOutside(origin) && (!screenTaintedUntil || *screenTaintedUntil < now + lasts))
            screenTaintedUntil = now + lasts;
    }
    bool isTainted(Instant now) const { return screenTaintedUntil && now < *screenTaintedUntil; }

    bool operator==(const ScreenTaint&) const = default;
};

} // namespace quorvell
