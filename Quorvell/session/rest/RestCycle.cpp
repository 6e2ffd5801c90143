// SPDX-License-Identifier: MIT
#include "Quorvell/session/rest/RestCycle.h"

#include "QuorvellCore/live/prompt/QuorvellPrompt.h"

#include <nlohmann/json.hpp>

namespace quorvell {

RestCycle::RestCycle(Ports ports)
    : m_ports(ports)
{
}

void RestCycle::doze()
{
    m_ports.log.record("dozed", Json::object());
    ++m_ports.meter.counts().dozes;
    m_ports.lines.end("resting", ConnectionKeeper::Farewell::silent);
    m_ports.resting.doze();
    m_ports.resting.captured(m_ports.listening.startAfresh());
}

void RestCycle::onset()
{
    if (m_ports.resting.state() != Doze::dozing)
        return;
    m_ports.quiet.noteActivity();
    if (m_ports.preparation.onset())
        m_ports.lines.prepare(m_ports.briefing.write());
}

void RestCycle::heard(const std::string& words)
{
    if (!m_ports.resting.heard(words))
        return;
    m_ports.quiet.noteActivity();
    m_ports.turn.userOverheard(words);
    wake();
}

void RestCycle::failed(const std::string& sentence)
{
    if (!m_ports.resting.failed())
        return;
    m_ports.log.record("rest_failed", Json::object());
    m_ports.notices.problem(sentence);
    wake();
}

void RestCycle::wake()
{
    if (!m_ports.resting.wake())
        return;
    m_ports.listening.startAfresh();
    m_ports.preparation.used();
    m_ports.lines.open(Arrival::woken, m_ports.briefing.write());
}

void RestCycle::finishWaking()
{
    const auto rested = m_ports.scheduler.now() - m_ports.resting.dozedAt();
    const std::string words = m_ports.resting.finishWaking();
    m_ports.handover.lineWoken();
    m_ports.log.record("woke", {{"after_ms", rested.count()}});
    if (words.empty())
        return;
    m_ports.quiet.noteActivity();
    m_ports.log.record("heard_while_resting", Json::object());
    m_ports.outbox.tell({.text = QuorvellPrompt::heardWhileResting(words)});
}

void RestCycle::dozeAgain(const std::string& sentence)
{
    m_ports.lines.end("waking failed", ConnectionKeeper::Farewell::silent);
    m_ports.outbox.forget();
    m_ports.listening.startAfresh();
    m_ports.resting.dozeAgain();
    m_ports.turn.breakOff();
    m_ports.notices.problem(sentence);
}

std::string RestCycle::wakingFailedSentence() const
{
    const std::string requests = m_ports.turn.conversation().openRequests();
    const std::string sentence = "Quorvell could not connect again in time. Check the network";
    return sentence + (requests.empty() ? " and try again." : ", then say this again: “" + requests + "”.");
}

} // namespace quorvell
