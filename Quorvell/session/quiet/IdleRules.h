// SPDX-License-Identifier: MIT
// When a quiet conversation rests and when it ends. Pure; the numbers are in SessionLimits.
#pragma once

#include "Quorvell/session/reports/Doze.h"
#include "Quorvell/session/settings/SessionLimits.h"

#include <chrono>
#include <string_view>

namespace quorvell {

/// What the look at the clock finds, once a second.
struct IdleRules {
    enum class Verdict {
        goOn,
        rest,
        stop,
    };

    std::chrono::milliseconds quietFor{}; ///< Since the last activity of either side.
    Doze doze = Doze::awake;
    bool isListening = false;
    bool isHighlighted = false; ///< Something on screen is highlighted for the user.
    bool mayRest = false; ///< Wanted, possible, and neither side is in the middle of anything.

    /// Resting comes first: whoever may rest now is judged as resting at the next look.
    Verdict verdict(const SessionLimits& limits) const;
    std::chrono::milliseconds allowedSilence(const SessionLimits& limits) const;
    /// Why the conversation stops; for the log and for scripts.
    std::string_view reason() const;
};

} // namespace quorvell
