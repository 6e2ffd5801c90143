// SPDX-License-Identifier: MIT
// Asks the parts of a conversation what goes on, so that it can be told whether it is quiet.
#pragma once

#include "Quorvell/session/connection/ConnectionKeeper.h"
#include "Quorvell/session/listening/Listening.h"
#include "Quorvell/session/outbox/Outbox.h"
#include "Quorvell/session/quiet/QuietFacts.h"
#include "Quorvell/session/quiet/QuietWatch.h"
#include "Quorvell/session/reports/UserNotices.h"
#include "Quorvell/session/rest/Resting.h"
#include "Quorvell/session/tools/ToolDesk.h"
#include "Quorvell/session/turn/ConversationTurn.h"

namespace quorvell {

/// Main thread; all is borrowed.
struct QuietSurvey {
    const ConversationTurn& turn;
    const Listening& listening;
    const ToolDesk& desk;
    const QuietWatch& quiet;
    const Outbox& outbox;
    const UserNotices& notices;
    const ConnectionKeeper& lines;
    const Resting& resting;

    QuietFacts facts() const;
};

} // namespace quorvell
