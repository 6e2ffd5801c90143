// SPDX-License-Identifier: MIT
// The part of a session that concerns what its client sends: which message may come when, and what each brings about.
#include "LiveService/conversation/LiveSessionEngine.h"
#include "Media/audio/SampleBytes.h"
#include "Understanding/dialogue/PlainReplies.h"

#include <string>
#include <utility>
#include <variant>

namespace quorvell {

namespace {

constexpr int normalClosure = 1000;

} // namespace

EngineEffects LiveSessionEngine::receive(const OpenAILiveClientMessage& message, Time now)
{
    if (m_phase == Phase::closed)
        return {};
    const bool mayComeFirst = std::holds_alternative<openai_client::SessionStart>(message)
        || std::holds_alternative<openai_client::Close>(message)
        || std::holds_alternative<openai_client::Malformed>(message);
    if (m_phase == Phase::waiting && !mayComeFirst) {
        refuse("session_not_started", "Send \"session.start\" first.", std::nullopt);
        countError();
        return taken();
    }
    if (!std::holds_alternative<openai_client::Malformed>(message))
        m_errorsInARow = 0;
    std::visit([&](const auto& kind) { take(kind, now); }, message);
    return taken();
}

void LiveSessionEngine::take(const openai_client::SessionStart& message, Time)
{
    if (m_phase == Phase::waiting)
        open(message.options);
    else
        refuse("session_already_started", "This session has started. Open another connection for another one.",
            message.eventID);
}

void LiveSessionEngine::take(const openai_client::InputAudio& message, Time now)
{
    if (m_samplesHeard == 0)
        m_effects.emplace_back(effect::ExpectSpeech{});
    m_samplesHeard += message.pcm.size() / 2;
    takeTurnEvents(m_turns->take(samplesOfBytes(message.pcm), now));
}

/// Commentary and thoughts inform a model; here there is none that could use them.
void LiveSessionEngine::take(const openai_client::Append& message, Time now)
{
    if (message.kind != openai_client::Append::Kind::instructions)
        return;
    const auto text = ClientText::fromInstructions(message.text);
    switch (text.kind) {
    case ClientText::Kind::greeting:
        say({PlainReplies::greeting(text.text), ClientText::Manner::voiced});
        break;
    case ClientText::Kind::words:
        say({text.text, ClientText::Manner::voiced});
        break;
    case ClientText::Kind::request:
        takeRequest(text.text, {}, now);
        break;
    case ClientText::Kind::nothing:
        break;
    }
}

void LiveSessionEngine::take(const openai_client::UserMessage& message, Time)
{
    auto text = ClientText::fromMessage(message.text);
    if (text.kind == ClientText::Kind::request) {
        stopModel();
        m_history.add("user", text.text);
    }
    if (!m_backend->addMessage(std::move(text)))
        refuse("too_many_messages", "Too many messages wait. Send \"response.create\" first.", message.eventID);
}

void LiveSessionEngine::take(const openai_client::FunctionOutput& message, Time)
{
    if (!m_backend->addOutput(message.callID, message.output))
        refuse("unknown_call_id", "No result is owed for this \"call_id\".", message.eventID);
}

void LiveSessionEngine::take(const openai_client::ResponseCreate& message, Time now)
{
    BackendOutputs outputs;
    switch (m_backend->create(now, outputs)) {
    case BackendRun::CreateVerdict::started:
        m_isTurnOpen = true;
        break;
    case BackendRun::CreateVerdict::inProgress:
        refuse("response_in_progress", "A response is running. Wait until it has ended.", message.eventID);
        break;
    case BackendRun::CreateVerdict::outputsOwed:
        refuse("function_call_output_missing", "Send the results of the function calls first.", message.eventID);
        break;
    }
    carryOut(std::move(outputs));
}

void LiveSessionEngine::take(const openai_client::Close&, Time)
{
    close("client_requested", normalClosure);
}

void LiveSessionEngine::take(const openai_client::Malformed& message, Time)
{
    refuse(message.code, message.reason, message.eventID);
    countError();
}

void LiveSessionEngine::refuse(
    std::string_view code, std::string_view reason, const std::optional<std::string>& eventID)
{
    OpenAIErrorReport report;
    report.code = code;
    report.message = reason;
    report.clientEventID = eventID;
    tell(news::Refused{std::move(report)});
}

} // namespace quorvell
