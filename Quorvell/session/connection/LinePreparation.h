// SPDX-License-Identifier: MIT
// Has a line opened in advance while somebody who may be talking to a resting assistant is still speaking, so that
// waking need not wait for it.
#pragma once

#include "Quorvell/loop/EventLog.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/connection/ConnectionKeeper.h"
#include "Quorvell/session/settings/SessionLimits.h"
#include "Quorvell/session/usage/TalkMeter.h"

#include <deque>

namespace quorvell {

/// Noise that brings no words opens only so many. Main thread; all is borrowed.
class LinePreparation {
public:
    struct Ports {
        Scheduler& scheduler;
        ConnectionKeeper& lines;
        EventLog& log;
        TalkMeter& meter;
    };

    LinePreparation(Ports ports, SessionLimits limits);
    LinePreparation(const LinePreparation&) = delete;
    LinePreparation& operator=(const LinePreparation&) = delete;

    /// Somebody began to speak while the conversation rests. Whether a line is to be prepared now.
    [[nodiscard]] bool onset();
    /// The conversation wakes and takes what was prepared, if anything was.
    void used();
    /// The rest is over in another way.
    void end() { m_timer.cancel(); }

private:
    void throwAway();
    bool isAllowed();

    Ports m_ports;
    SessionLimits m_limits;
    std::deque<SessionTime> m_unused; ///< When those of the last hour were opened that no words followed yet.
    TimerHandle m_timer;
};

} // namespace quorvell
