// SPDX-License-Identifier: MIT
#include "Quorvell/session/own/OwnWords.h"

#include "Quorvell/session/turn/SessionEvents.h"

#include <nlohmann/json.hpp>

#include <utility>
#include <vector>

namespace quorvell {

OwnWords::OwnWords(Ports ports, Questions questions)
    : m_ports(ports)
    , m_questions(questions)
{
}

void OwnWords::announce(std::string sentence)
{
    m_announcements.add(std::move(sentence), m_ports.scheduler.now());
}

void OwnWords::tellIfDue(const QuietFacts& facts)
{
    if (!m_announcements.isDue(facts, m_ports.scheduler.now()))
        return;
    m_ports.log.record("announced", Json::object());
    const std::vector<std::string> sentences = m_announcements.take();
    m_ports.outbox.send({.text = SessionEvents::announcement(sentences), .sentences = sentences});
}

void OwnWords::tellOnDevice()
{
    for (const std::string& sentence : m_announcements.take())
        m_ports.notices.announce(sentence);
}

void OwnWords::ask(const std::string& question)
{
    if (m_ports.turn.isOpen() || m_questions == Questions::goUnheard)
        return;
    m_ports.log.record("question_put", Json::object());
    m_ports.notices.announce(question);
    m_ports.quiet.noteActivity();
}

} // namespace quorvell
