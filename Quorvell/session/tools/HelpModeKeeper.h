// SPDX-License-Identifier: MIT
// The help mode: changed by the user, and by the model where the user's own words lately asked for it.
#pragma once

#include "Quorvell/loop/EventLog.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/reports/ActionWatch.h"
#include "Quorvell/session/reports/SessionAudience.h"
#include "Quorvell/session/tools/HeldModeCalls.h"
#include "Quorvell/session/tools/ToolReport.h"
#include "Quorvell/session/turn/ConversationTurn.h"
#include "QuorvellCore/live/prompt/HelpMode.h"

#include <functional>

namespace quorvell {

/// Main thread; what it borrows must outlive it.
class HelpModeKeeper {
public:
    struct Ports {
        Scheduler& scheduler;
        EventLog& log;
        SessionAudience& observer;
        ConversationTurn& turn; ///< What the user said.
        std::function<void(ToolReport)> report; ///< Of set_mode only.
        ActionWatch& watch = ActionWatch::nobody();
    };

    HelpModeKeeper(Ports ports, HelpMode mode);

    HelpMode mode() const { return m_mode; }
    void change(HelpMode mode);

    /// The model asks; `words` is what is known of the user's latest. tool_report::HelpModeDue follows.
    void ask(tool_report::HelpModeAsked asked, const HeldModeCalls::Words& words);
    void wordsCame() { m_heldCalls.wordsCame(); }
    void judge(tool_report::HelpModeDue due);
    /// The conversation is over, and with it what the model asked for.
    void giveUp() { m_heldCalls.giveUp(); }

private:
    Ports m_ports;
    HelpMode m_mode;
    HeldModeCalls m_heldCalls;
};

} // namespace quorvell
