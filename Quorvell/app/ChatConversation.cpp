#include "Quorvell/app/ChatConversation.h"

#include "QuorvellCore/text/Characters.h"

#include <utility>

namespace quorvell {

namespace {

constexpr int couldNot = 1;
constexpr std::chrono::milliseconds soon{0};

} // namespace

ChatConversation::ChatConversation(Ports ports, Partner partner)
    : m_ports(std::move(ports))
    , m_partner(partner)
{
}

void ChatConversation::begin(SessionController& session)
{
    m_session = &session;
    if (m_partner == Partner::person)
        m_session->begin();
    else
        askForLine();
}

void ChatConversation::interrupt()
{
    end("interrupted");
}

void ChatConversation::turnCompleted(TurnOutcome outcome)
{
    if (outcome == TurnOutcome::unanswered)
        m_exitCode = couldNot;
    m_isBrokenOff = outcome == TurnOutcome::brokenOff;
    if (!m_isEnding && !m_isBrokenOff)
        m_next = m_ports.scheduler.after(soon, [this] { askForLine(); });
}

void ChatConversation::conversationEnded(const SessionEnd& end)
{
    if (m_isEnding)
        return finish();
    if (!end.isFailure)
        return;
    // Between two turns nothing is lost: the next line begins a new conversation.
    const bool wasAnythingLost = std::exchange(m_isBrokenOff, false) || !end.unsent.empty();
    if (!end.mustUserAct && (m_partner == Partner::person || !wasAnythingLost)) {
        m_next = m_ports.scheduler.after(soon, [this] { askForLine(); });
        return;
    }
    m_exitCode = couldNot;
    m_next = m_ports.scheduler.after(soon, [this] { finish(); });
}

void ChatConversation::askForLine()
{
    if (m_isAsking || m_isEnding || m_session->isTurnOpen())
        return;
    m_isAsking = true;
    m_ports.lines.readNext([this](const std::optional<std::string>& line) {
        m_isAsking = false;
        lineRead(line);
    });
}

void ChatConversation::lineRead(const std::optional<std::string>& line)
{
    if (m_isEnding)
        return;
    if (!line)
        return end("end of input");
    if (trimmed(*line).empty())
        return askForLine();
    m_session->submitTyped({{{*line}}, false});
}

void ChatConversation::end(std::string_view reason)
{
    if (std::exchange(m_isEnding, true))
        return;
    if (m_session->phase() == SessionPhase::idle)
        return finish();
    m_session->stop(reason);
}

void ChatConversation::finish()
{
    m_ports.finished(m_exitCode);
}

} // namespace quorvell
