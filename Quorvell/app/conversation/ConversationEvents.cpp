// SPDX-License-Identifier: MIT
#include "Quorvell/app/conversation/ConversationEvents.h"

#include <nlohmann/json.hpp>

#include <ostream>
#include <utility>

namespace quorvell {

namespace {

const char* nameOf(SessionPhase phase)
{
    switch (phase) {
    case SessionPhase::idle:
        return "idle";
    case SessionPhase::connecting:
        return "connecting";
    case SessionPhase::active:
        return "active";
    }
    return "";
}

const char* nameOf(Doze doze)
{
    switch (doze) {
    case Doze::awake:
        return "awake";
    case Doze::dozing:
        return "dozing";
    case Doze::waking:
        return "waking";
    }
    return "";
}

const char* nameOf(SessionObserver::Ear ear)
{
    switch (ear) {
    case SessionObserver::Ear::closed:
        return "closed";
    case SessionObserver::Ear::open:
        return "open";
    case SessionObserver::Ear::hearing:
        return "hearing";
    case SessionObserver::Ear::muted:
        return "muted";
    }
    return "";
}

} // namespace

ConversationEvents::ConversationEvents(std::ostream& out, const Scheduler& clock)
    : m_out(out)
    , m_clock(clock)
    , m_start(clock.now())
{
}

void ConversationEvents::write(std::string_view event, const Json& fields)
{
    Json line = {
        {"event", std::string(event)}, {"at", isoText(m_clock.wallClock())}, {"ms", (m_clock.now() - m_start).count()}};
    line.update(fields);
    m_out << dumpJson(line) << std::endl; // Whoever reads along sees each event at once.
}

void ConversationEvents::phaseChanged(SessionPhase phase)
{
    write("phase", {{"phase", nameOf(phase)}});
}

void ConversationEvents::restChanged(Doze doze)
{
    write("rest", {{"rest", nameOf(doze)}});
}

void ConversationEvents::linkChanged(Link link)
{
    write("link", {{"link", link == Link::steady ? "steady" : "reconnecting"}});
}

void ConversationEvents::earChanged(Ear ear)
{
    write("ear", {{"ear", nameOf(ear)}});
}

void ConversationEvents::helpModeChanged(HelpMode mode)
{
    write("help_mode", {{"mode", std::string(nameOf(mode))}});
}

void ConversationEvents::usageChanged(const SessionUsage& usage)
{
    write("usage",
        {{"tokens", usage.tokens}, {"billed_seconds", usage.billedSeconds},
            {"microphone_chunks", usage.microphoneChunks}, {"voice_seconds", usage.voiceSeconds},
            {"connected_seconds", usage.connectedSeconds}, {"reconnections", usage.reconnections},
            {"rotations", usage.rotations}, {"rests", usage.dozes}, {"prepared", usage.prepared}});
}

void ConversationEvents::userSaid(const std::string& text, Words words)
{
    write("words", {{"speaker", "user"}, {"source", words == Words::typed ? "typed" : "spoken"}, {"text", text}});
}

void ConversationEvents::assistantSaid(const std::string& text)
{
    tellThought();
    m_reply += (m_reply.empty() ? "" : " ") + text;
    write("words", {{"speaker", "assistant"}, {"text", text}});
}

void ConversationEvents::thoughtChanged(const ThoughtSummary& thought)
{
    const std::string line = thought.newestLine();
    if (!line.starts_with(m_thought))
        tellThought();
    m_thought = line;
}

/// Once it is whole: another one has begun, or something came of it.
void ConversationEvents::tellThought()
{
    if (const std::string line = std::exchange(m_thought, {}); !line.empty())
        write("thinking", {{"text", line}});
}

void ConversationEvents::planChanged(const TaskPlan& plan)
{
    write("plan", plan.json());
}

void ConversationEvents::toolCalled(const LiveFunctionCall& call)
{
    tellThought();
    write("tool_call", {{"id", call.id}, {"name", call.name}, {"args", call.args}});
}

void ConversationEvents::toolAnswered(const LiveFunctionResponse& response)
{
    write("tool_result", {{"id", response.id}, {"name", response.name}, {"result", response.response}});
}

void ConversationEvents::problemArose(const std::string& sentence)
{
    write("problem", {{"text", sentence}});
}

void ConversationEvents::turnCompleted(TurnOutcome outcome)
{
    tellThought();
    write("reply", {{"answered", outcome == TurnOutcome::answered}, {"text", std::exchange(m_reply, {})}});
}

void ConversationEvents::conversationEnded(const SessionEnd& end)
{
    write(
        "closed", {{"reason", end.reason}, {"failed", end.isFailure}, {"text", end.sentence}, {"unsent", end.unsent}});
}

} // namespace quorvell
