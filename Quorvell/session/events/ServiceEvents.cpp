// SPDX-License-Identifier: MIT
#include "Quorvell/session/events/ServiceEvents.h"

#include "QuorvellCore/text/CodeWord.h"

#include <nlohmann/json.hpp>

#include <variant>

namespace quorvell {

ServiceEvents::ServiceEvents(Ports ports)
    : m_ports(ports)
{
}

struct ServiceEvents::Handler {
    ServiceEvents& events;
    Ports& ports;

    void operator()(const live_event::Audio& sound) { events.handleVoice(sound); }
    void operator()(const live_event::OutputTranscript& words) { events.handleVoiceWords(words.text); }
    void operator()(const live_event::InputTranscript& words)
    {
        ports.listening.wordsCame(words.text);
        ports.modes.wordsCame();
    }
    void operator()(const live_event::ToolCall& tool) { events.handleToolCall(tool); }
    void operator()(const live_event::ToolCallCancellation& calls) { ports.desk.cancel(calls.ids); }
    void operator()(const live_event::Delegated&)
    {
        ports.listening.modelActed();
        ports.turn.expectNewReply();
        ports.turn.backendStarted();
    }
    void operator()(const live_event::BackendIdle&) { ports.turn.backendFinished(); }
    void operator()(const live_event::ServerError& error) { events.handleServerError(error); }
    void operator()(const live_event::Diagnostic& fact) { ports.log.record(fact.name, {{"detail", fact.detail}}); }
    void operator()(const live_event::Usage& usage) { ports.meter.report(usage); }
    void operator()(const live_event::BilledSeconds& usage) { ports.meter.report(usage); }
    void operator()(const live_event::ContextUsage& usage) { ports.meter.report(usage); }
    void operator()(const live_event::Thinking& thought) { ports.turn.thinking(thought.text); }
    void operator()(const live_event::Interrupted&) { events.handleInterrupted(); }
    void operator()(const live_event::TurnComplete&) { ports.turn.serviceFinished(); }
    void operator()(const live_event::VoiceActivity& activity)
    {
        if (activity.speaking)
            ports.turn.expectNewReply();
    }
    // The connections themselves are about these.
    void operator()(const live_event::SetupComplete&) { }
    void operator()(const live_event::ResumptionHandle&) { }
    void operator()(const live_event::GoAway&) { }
    // What was generated may still have to sound; the turn's end is what counts.
    void operator()(const live_event::GenerationComplete&) { }
};

void ServiceEvents::handle(const LiveServerEvent& event)
{
    std::visit(Handler{*this, m_ports}, event);
}

void ServiceEvents::handleVoice(const live_event::Audio& sound)
{
    if (m_ports.turn.bargedIn())
        return;
    m_ports.listening.voiceReacted();
    m_ports.meter.voiceReceived(sound.pcm.size());
    m_ports.turn.voiceSound(sound.pcm);
    m_ports.quiet.postpone(m_ports.player.unplayed()); // Quiet begins when it has sounded.
}

void ServiceEvents::handleVoiceWords(const std::string& words)
{
    if (m_ports.turn.bargedIn())
        return;
    m_ports.listening.voiceReacted();
    m_ports.turn.voiceWords(words);
}

void ServiceEvents::handleToolCall(const live_event::ToolCall& tool)
{
    const auto line = m_ports.lines.serial();
    if (m_ports.desk.isNews(tool.calls, line)) {
        const auto act = m_ports.listening.modelActed();
        m_ports.turn.backendStarted();
        m_ports.turn.acted(act);
    }
    m_ports.desk.noteRequests(m_ports.turn.requests());
    m_ports.desk.handle(tool.calls, line);
}

/// The service itself heard the user speak over the reply; what comes from now on is new.
void ServiceEvents::handleInterrupted()
{
    if (m_ports.turn.isVoiceSounding()) {
        m_ports.turn.cutReply(ConversationTurn::Cut::spokenOver);
        m_ports.watch.userBargedIn();
    }
    m_ports.turn.expectNewReply();
    m_ports.quiet.noteActivity();
}

void ServiceEvents::handleServerError(const live_event::ServerError& error)
{
    m_ports.log.record("server_error",
        {{"code", codeWord(error.code.value_or(""))}, {"about", codeWord(error.clientEventID.value_or(""))}});
    m_ports.observer.problemArose(error.message);
    m_ports.turn.problemShown();
}

void ServiceEvents::replyWritten(const std::string& text)
{
    m_ports.listening.modelActed();
    m_ports.turn.replyWritten(text);
}

void ServiceEvents::replyGrew(const std::string& delta)
{
    m_ports.listening.modelActed();
    m_ports.turn.replyGrew(delta);
}

} // namespace quorvell
