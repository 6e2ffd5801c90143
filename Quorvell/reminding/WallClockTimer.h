// SPDX-License-Identifier: MIT
// One alarm at a moment of the wall clock, whatever happens to that clock or to the computer's sleep in between.
#pragma once

#include "QuorvellCore/text/Instant.h"

#include <functional>
#include <optional>

namespace quorvell {

/// Main thread.
class WallClockTimer {
public:
    virtual ~WallClockTimer() = default;

    /// By the computer's clock, cut to milliseconds.
    virtual Instant now() const = 0;
    /// Takes the place of an earlier alarm. A moment that is past rings at once; without one nothing rings.
    virtual void setAlarm(std::optional<Instant> moment) = 0;
    /// `rang` is called, never inside setAlarm, when the moment has come and also when the clock was set; whoever is
    /// called looks at the clock and sets the next alarm.
    virtual void onRing(std::function<void()> rang) = 0;
};

} // namespace quorvell
