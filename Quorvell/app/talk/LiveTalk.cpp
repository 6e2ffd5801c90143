// SPDX-License-Identifier: MIT
#include "Quorvell/app/talk/LiveTalk.h"

#include "Quorvell/app/program/ExitCode.h"
#include "Quorvell/app/terminal/Keyboard.h"

#include <utility>

namespace quorvell {

namespace {

constexpr std::chrono::milliseconds soon{0};

} // namespace

LiveTalk::LiveTalk(Ports ports, SessionSettings::Listening listening)
    : m_ports(std::move(ports))
    , m_listening(listening)
{
}

std::string LiveTalk::keysText(SessionSettings::Listening listening)
{
    return listening == SessionSettings::Listening::pushToTalk
        ? "Press Space, talk, press Space again. m mutes, s stops an answer, u shows what was used, q leaves."
        : "Just talk. m mutes, s stops an answer, u shows what was used, q leaves.";
}

void LiveTalk::begin(SessionController& session)
{
    m_session = &session;
    m_session->begin();
}

void LiveTalk::keyPressed(char key)
{
    switch (key) {
    case ' ':
    case '\n':
    case '\r':
        return talkKey();
    case 'm':
        return toggleMute();
    case 's':
        return m_session->interrupt();
    case 'u':
        return m_ports.tell(m_ports.usage());
    case 'q':
    case Keyboard::endOfInput:
        return end("the user left");
    case '?':
    case 'h':
        return m_ports.tell(keysText(m_listening));
    default:
        return; // Nothing is typed here.
    }
}

void LiveTalk::interrupt()
{
    if (!m_session->isTurnOpen() || std::exchange(m_wasInterrupted, true))
        return end("interrupted");
    m_session->interrupt();
    m_ports.tell("Stopped. Ctrl+C once more leaves.");
}

void LiveTalk::leave()
{
    end("the system ends the program");
}

void LiveTalk::turnCompleted(TurnOutcome)
{
    m_wasInterrupted = false;
}

void LiveTalk::conversationEnded(const SessionEnd& ended)
{
    m_isKeyHeld = false;
    if (m_isEnding)
        return m_ports.finished(0);
    if (ended.mustUserAct) {
        m_isEnding = true;
        m_next = m_ports.scheduler.after(soon, [this] { m_ports.finished(exit_code::couldNot); });
        return;
    }
    if (!ended.isFailure)
        m_ports.tell("The conversation has ended (" + ended.reason + "), so that nothing more is used.");
    m_ports.tell("Space begins a new one, q leaves.");
}

void LiveTalk::talkKey()
{
    if (m_isEnding)
        return;
    if (m_listening == SessionSettings::Listening::pushToTalk) {
        m_isKeyHeld = !m_isKeyHeld;
        m_session->pushToTalk(m_isKeyHeld ? SessionController::Key::pressed : SessionController::Key::released);
    } else if (m_session->phase() == SessionPhase::idle) {
        m_session->begin();
    }
}

void LiveTalk::toggleMute()
{
    m_session->setMuted(m_session->isMuted() ? SessionController::Muting::heard : SessionController::Muting::muted);
}

void LiveTalk::end(std::string_view reason)
{
    if (std::exchange(m_isEnding, true))
        return m_ports.finished(0); // Asked twice: the good-bye is not waited for.
    if (m_session->phase() == SessionPhase::idle)
        return m_ports.finished(0);
    m_session->stop(reason);
}

} // namespace quorvell
