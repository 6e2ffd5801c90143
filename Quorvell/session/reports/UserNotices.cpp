// SPDX-License-Identifier: MIT
#include "Quorvell/session/reports/UserNotices.h"

namespace quorvell {

UserNotices::UserNotices(SessionAudience& observer, SpeechSynthesiser* synthesiser, SessionSettings::Replies replies)
    : m_observer(observer)
    , m_synthesiser(synthesiser)
    , m_replies(replies)
{
}

void UserNotices::problem(const std::string& sentence)
{
    m_observer.problemArose(sentence);
    say(sentence);
}

void UserNotices::announce(const std::string& sentence)
{
    m_observer.assistantSaid(sentence);
    say(sentence);
}

void UserNotices::say(const std::string& sentence)
{
    if (m_synthesiser && m_replies == SessionSettings::Replies::spoken)
        m_synthesiser->say(sentence);
}

void UserNotices::hush()
{
    if (m_synthesiser)
        m_synthesiser->stop();
}

bool UserNotices::isSpeaking() const
{
    return m_synthesiser && m_synthesiser->isSpeaking();
}

} // namespace quorvell
