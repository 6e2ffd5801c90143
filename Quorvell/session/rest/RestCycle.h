// SPDX-License-Identifier: MIT
// How a conversation goes to rest and comes back: hangs up, hears on the device, connects again, tells what it heard.
#pragma once

#include "Quorvell/loop/EventLog.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/briefing/Briefing.h"
#include "Quorvell/session/connection/ConnectionKeeper.h"
#include "Quorvell/session/connection/LinePreparation.h"
#include "Quorvell/session/listening/Listening.h"
#include "Quorvell/session/outbox/Handover.h"
#include "Quorvell/session/outbox/Outbox.h"
#include "Quorvell/session/quiet/QuietWatch.h"
#include "Quorvell/session/reports/UserNotices.h"
#include "Quorvell/session/rest/Resting.h"
#include "Quorvell/session/turn/ConversationTurn.h"
#include "Quorvell/session/usage/TalkMeter.h"

#include <string>

namespace quorvell {

/// Main thread; all is borrowed.
class RestCycle {
public:
    struct Ports {
        const Scheduler& scheduler;
        EventLog& log;
        Resting& resting;
        ConnectionKeeper& lines;
        LinePreparation& preparation;
        const Briefing& briefing;
        Listening& listening;
        QuietWatch& quiet;
        ConversationTurn& turn;
        TalkMeter& meter;
        Outbox& outbox;
        Handover& handover;
        UserNotices& notices;
    };

    explicit RestCycle(Ports ports);

    void doze();
    /// Nothing unless it dozes.
    void wake();
    /// The line that was opened for it is ready.
    void finishWaking();
    /// Waking has failed, and it listens once more; `sentence` is told to the user.
    void dozeAgain(const std::string& sentence);
    std::string wakingFailedSentence() const;

    void onset();
    void heard(const std::string& words);
    void failed(const std::string& sentence);

private:
    Ports m_ports;
};

} // namespace quorvell
