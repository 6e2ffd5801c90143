// SPDX-License-Identifier: MIT
// What the user does that bears on actions which run, or wait for a yes.
#pragma once

#include "QuorvellCore/automation/TaskPlan.h"
#include "QuorvellCore/live/prompt/HelpMode.h"
#include "QuorvellCore/safety/HeardUtterance.h"

namespace quorvell {

/// For whoever acts; each may be passed over. Main thread. What a report makes it want from the session it asks for
/// later, never from inside the report.
class ActionWatch {
public:
    virtual ~ActionWatch() = default;

    /// For where nobody acts.
    static ActionWatch& nobody()
    {
        static ActionWatch watch;
        return watch;
    }

    /// They began to speak while the assistant's voice was sounding.
    virtual void userBargedIn() { }
    /// One whole utterance, spoken or typed. Whether it may be a yes tells ConsentWords alone.
    virtual void userSaid(const HeardUtterance&) { }
    /// They want whatever runs to stop: the key for it, or their plain word. The action that runs was told already.
    virtual void stopped() { }
    virtual void modeChanged(HelpMode) { }
    virtual void planChanged(const TaskPlan&) { }
    /// The conversation is over; nothing more is to happen.
    virtual void ended() { }
};

} // namespace quorvell
