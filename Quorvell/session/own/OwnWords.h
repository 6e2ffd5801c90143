// SPDX-License-Identifier: MIT
// What the program itself tells and asks beside the model: announcements, at a moment for them, and questions that only
// the user's own answer settles.
#pragma once

#include "Quorvell/loop/EventLog.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/outbox/Outbox.h"
#include "Quorvell/session/quiet/Announcements.h"
#include "Quorvell/session/quiet/QuietFacts.h"
#include "Quorvell/session/quiet/QuietWatch.h"
#include "Quorvell/session/reports/UserNotices.h"
#include "Quorvell/session/turn/ConversationTurn.h"

#include <string>

namespace quorvell {

/// Main thread; all is borrowed.
class OwnWords {
public:
    enum class Questions {
        reachTheUser,
        goUnheard, ///< Replies are spoken, and nothing here can speak.
    };

    struct Ports {
        Scheduler& scheduler;
        EventLog& log;
        UserNotices& notices;
        Outbox& outbox;
        QuietWatch& quiet;
        const ConversationTurn& turn;
    };

    OwnWords(Ports ports, Questions questions);
    OwnWords(const OwnWords&) = delete;
    OwnWords& operator=(const OwnWords&) = delete;

    void announce(std::string sentence);
    /// By the model, if this is the moment.
    void tellIfDue(const QuietFacts& facts);
    /// By the program, since there is no model.
    void tellOnDevice();
    /// Word for word, shown and said on the device. Nothing while a turn is open, or where it would not be heard: a yes
    /// must not belong to a question that nobody got.
    void ask(const std::string& question);

private:
    Ports m_ports;
    Questions m_questions;
    Announcements m_announcements;
};

} // namespace quorvell
