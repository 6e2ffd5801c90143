// SPDX-License-Identifier: MIT
#include "Quorvell/app/chat/ChatConversation.h"

#include "Quorvell/app/program/ExitCode.h"

#include <utility>

namespace quorvell {

namespace {

constexpr std::chrono::milliseconds soon{0};

} // namespace

ChatConversation::ChatConversation(Ports ports, Partner partner, Voice voice)
    : m_ports(std::move(ports))
    , m_partner(partner)
    , m_voice(voice)
{
}

void ChatConversation::begin(SessionController& session)
{
    m_session = &session;
    if (m_partner == Partner::person)
        m_session->begin();
    else
        askForMessage();
}

void ChatConversation::interrupt()
{
    if (m_partner == Partner::script || std::exchange(m_wasInterrupted, true))
        return end("interrupted");
    if (m_session->isTurnOpen())
        return m_session->interrupt();
    if (!m_ports.lines.dropTyped())
        tell("Ctrl+C once more leaves.");
}

void ChatConversation::leave()
{
    end("the system ends the program");
}

void ChatConversation::assistantSaid(const std::string&)
{
    m_hasOnlyProblem = false;
}

void ChatConversation::problemArose(const std::string&)
{
    m_hasOnlyProblem = true;
}

void ChatConversation::turnCompleted(TurnOutcome outcome)
{
    if (std::exchange(m_hasOnlyProblem, false) || outcome == TurnOutcome::unanswered)
        m_exitCode = exit_code::couldNot;
    m_isBrokenOff = outcome == TurnOutcome::brokenOff;
    if (!m_isEnding && !m_isBrokenOff)
        m_next = m_ports.scheduler.after(soon, [this] { askForMessage(); });
}

void ChatConversation::conversationEnded(const SessionEnd& end)
{
    if (m_isEnding)
        return finish();
    // Between two turns nothing is lost: the next line begins a new conversation.
    const bool wasAnythingLost = std::exchange(m_isBrokenOff, false) || !end.unsent.empty();
    const bool mayGoOn = m_partner == Partner::person || !end.isFailure || !wasAnythingLost;
    if (!end.mustUserAct && mayGoOn) {
        m_next = m_ports.scheduler.after(soon, [this] { askForMessage(); });
        return;
    }
    m_exitCode = exit_code::couldNot;
    m_next = m_ports.scheduler.after(soon, [this] { finish(); });
}

void ChatConversation::askForMessage()
{
    if (m_isAsking || m_isEnding || m_session->isTurnOpen())
        return;
    m_isAsking = true;
    m_ports.lines.readNext([this](const std::optional<TypedMessage>& message) {
        m_isAsking = false;
        messageRead(message);
    });
}

void ChatConversation::messageRead(const std::optional<TypedMessage>& message)
{
    if (m_isEnding)
        return;
    m_wasInterrupted = false;
    if (!message)
        return end("end of input");
    if (message->isEmpty())
        return askForMessage();
    if (const auto word = m_partner == Partner::person ? ChatWord::read(*message) : std::nullopt)
        return carryOut(*word);
    TypedMessage sent = *message;
    sent.spoken = m_voice == Voice::aloud && !m_isVoiceOff;
    m_session->submitTyped(sent);
}

void ChatConversation::carryOut(const ChatWord& word)
{
    switch (word.kind) {
    case ChatWord::Kind::help:
        tell(ChatWord::overview());
        break;
    case ChatWord::Kind::mode:
        changeMode(word.argument);
        break;
    case ChatWord::Kind::mute:
        changeVoice();
        break;
    case ChatWord::Kind::usage:
        tell(m_ports.usage ? m_ports.usage() : "Nothing was counted.");
        break;
    case ChatWord::Kind::quit:
        return end("the user left");
    case ChatWord::Kind::unknown:
        tell(ChatWord::unknownText(word.word));
        break;
    }
    askForMessage();
}

void ChatConversation::changeMode(const std::string& name)
{
    const auto mode = helpModeNamed(name);
    if (mode && *mode == m_session->helpMode())
        tell("The mode is " + name + " already.");
    else if (mode)
        m_session->setHelpMode(*mode); // Shown where every change of it is.
    else if (name.empty())
        tell("Mode: " + std::string(nameOf(m_session->helpMode()))
            + ". There are guide (shows, you act), auto (does harmless steps) and do (does whole tasks).");
    else
        tell("There are three modes: guide, auto and do.");
}

void ChatConversation::changeVoice()
{
    if (m_voice == Voice::none)
        return tell("Replies are only shown here. Start with --aloud to hear them too.");
    m_isVoiceOff = !m_isVoiceOff;
    tell(m_isVoiceOff ? "Replies are shown only; /mute again brings the voice back." : "Replies are spoken again.");
}

void ChatConversation::tell(const std::string& sentence)
{
    if (m_ports.tell)
        m_ports.tell(sentence);
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
