// SPDX-License-Identifier: MIT
// What the program itself tells the user beside the conversation: shown, and said on the device where replies are
// spoken.
#pragma once

#include "Quorvell/session/ports/SpeechSynthesiser.h"
#include "Quorvell/session/reports/SessionAudience.h"
#include "Quorvell/session/settings/SessionSettings.h"

#include <string>

namespace quorvell {

/// Main thread; what it borrows must outlive it.
class UserNotices {
public:
    /// Without a synthesiser everything is shown only.
    UserNotices(SessionAudience& observer, SpeechSynthesiser* synthesiser, SessionSettings::Replies replies);

    /// What went wrong and what to do, in one sentence.
    void problem(const std::string& sentence);
    /// What the model would have told, had it been there.
    void announce(const std::string& sentence);
    void say(const std::string& sentence);
    void hush();
    bool isSpeaking() const;

private:
    SessionAudience& m_observer;
    SpeechSynthesiser* m_synthesiser;
    SessionSettings::Replies m_replies;
};

} // namespace quorvell
