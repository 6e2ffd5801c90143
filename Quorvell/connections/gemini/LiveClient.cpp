// SPDX-License-Identifier: MIT
#include "Quorvell/connections/gemini/LiveClient.h"

#include "Media/audio/SampleBytes.h"
#include "QuorvellCore/live/prompt/QuorvellPrompt.h"
#include "QuorvellCore/live/tools/ToolCatalogue.h"
#include "QuorvellCore/live/wire/gemini/GeminiLiveEndpoint.h"
#include "QuorvellCore/live/wire/gemini/LiveMessage.h"
#include "QuorvellCore/live/wire/gemini/LiveServerParser.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

using Kind = ConnectionFailure::Kind;

constexpr int portRate = 24000; ///< Of the session's sound, Hz.
static_assert(LiveMessage::outputSampleRate == portRate, "what the model says goes on as it is");

const Json* memberNamed(const Json& offered, const std::string& name)
{
    for (const Json& tool : offered)
        if (readString(tool, "name") == name)
            return &tool;
    return nullptr;
}

bool mayNameNextStep(const Json& tool)
{
    const Json* parameters = memberOf(tool, "parameters");
    const Json* properties = parameters ? memberOf(*parameters, "properties") : nullptr;
    return properties && memberOf(*properties, "then");
}

/// The tools that the session offers, in this service's form.
Json toolGroups(const Json& offered)
{
    ToolFlags flags{.tiered = true, .webLookup = true, .connectedApps = true};
    flags.nextStep = std::any_of(offered.begin(), offered.end(), mayNameNextStep);
    Json kept = Json::array();
    for (const Json& group : ToolCatalogue::liveTools(flags)) {
        const Json* declarations = memberOf(group, "functionDeclarations");
        for (const Json& tool : declarations ? *declarations : Json::array())
            if (memberNamed(offered, readString(tool, "name").value_or("")))
                kept.push_back(tool);
    }
    return kept.empty() ? Json::array() : Json::array({Json{{"functionDeclarations", std::move(kept)}}});
}

bool isOutput(const LiveServerEvent& event)
{
    return std::holds_alternative<live_event::Audio>(event)
        || std::holds_alternative<live_event::OutputTranscript>(event)
        || std::holds_alternative<live_event::ToolCall>(event);
}

} // namespace

LiveClient::LiveClient(LiveAccessSource& accessSource, LiveModelSettings models, LiveConnectionObserver& observer,
    ServiceExperience& experience, LiveTimeLimits limits)
    : m_experience(experience)
    , m_limits(limits)
    , m_resampler(portRate, LiveMessage::inputSampleRate)
    , m_life(accessSource, observer, [this] { m_socket.reset(); })
{
    m_options.model = std::move(models.voiceModel);
    m_options.voiceName = std::move(models.voice);
}

// ---- Opening

void LiveClient::open(const LiveSetup& setup)
{
    if (!m_life.is(Stage::unopened))
        return;
    // One model talks and uses the tools.
    m_options.systemInstruction = setup.voiceInstructions;
    if (!setup.toolInstructions.empty())
        m_options.systemInstruction += "\n\n" + setup.toolInstructions;
    m_options.tools = toolGroups(setup.tools);
    m_options.resumptionHandle = setup.resumptionHandle;
    if (!setup.resumptionHandle)
        m_history = setup.history;
    m_life.locate([this] { openSocket(); });
}

void LiveClient::openSocket()
{
    m_life.enter(Stage::opening);
    LiveSocket::Reports reports;
    reports.opened = [this] { socketOpened(); };
    reports.textReceived = [this](const std::string& text) { textReceived(text); };
    reports.closed = [this](const ConnectionFailure& failure) { socketClosed(failure); };
    m_socket = std::make_unique<LiveSocket>(std::move(reports), m_limits);
    const LiveAccess& access = m_life.access();
    m_socket->open(GeminiLiveEndpoint{access.address()}.request(access.key), access.line);
}

void LiveClient::socketOpened()
{
    m_life.enter(Stage::starting);
    m_life.startDeadline(m_limits.toStart, [this] { m_life.fail({Kind::startedTooSlowly}); });
    send(LiveMessage::setup(m_options));
}

void LiveClient::socketClosed(const ConnectionFailure& failure)
{
    if (m_life.is(Stage::closing))
        return m_life.finish({});
    m_life.fail(failure);
}

void LiveClient::setUp()
{
    m_life.enter(Stage::started);
    m_life.stopDeadline();
    if (const auto history = LiveMessage::history(m_history))
        send(*history);
    m_history.clear();
}

// ---- What the service reports

void LiveClient::textReceived(const std::string& text)
{
    m_hasReacted = true;
    if (m_life.is(Stage::started))
        m_experience.wasGivenUpOverSound = false;
    for (LiveServerEvent& event : LiveServerParser::parse(text)) {
        if (m_life.is(Stage::closed))
            return;
        handle(std::move(event));
    }
}

void LiveClient::handle(LiveServerEvent event)
{
    if (std::holds_alternative<live_event::SetupComplete>(event)) {
        if (!m_life.is(Stage::starting))
            return;
        setUp();
    }
    if (auto* tool = std::get_if<live_event::ToolCall>(&event); tool && !keepNewCalls(tool->calls))
        return;
    if (const auto* cancelled = std::get_if<live_event::ToolCallCancellation>(&event))
        for (const std::string& id : cancelled->ids)
            m_owed.erase(id);
    if (isOutput(event) && m_life.is(Stage::started))
        modelIsAnswering();
    const bool endsTurn = std::holds_alternative<live_event::TurnComplete>(event)
        || std::holds_alternative<live_event::Interrupted>(event);
    m_life.report(event);
    if (endsTurn)
        turnEnded();
    reportIdleness();
}

/// False when none is new.
bool LiveClient::keepNewCalls(std::vector<LiveFunctionCall>& calls)
{
    std::erase_if(calls, [this](const LiveFunctionCall& call) { return !m_calls.isNew(call.id); });
    for (const LiveFunctionCall& call : calls)
        m_owed.insert(call.id);
    return !calls.empty();
}

void LiveClient::turnEnded()
{
    m_isAnswering = false;
    if (m_owed.empty())
        m_life.stopDeadline();
    sendWaiting();
}

void LiveClient::reportIdleness()
{
    if (isFree() && m_waiting.empty() && std::exchange(m_isBusy, false))
        m_life.report(live_event::BackendIdle{});
}

// ---- What the session wants

void LiveClient::sendAudio(std::span<const std::uint8_t> pcm)
{
    if (m_life.is(Stage::started) && m_socket->unsentBytes() < LiveSocket::mostUnsentSound)
        sendSound(m_resampler.process(samplesOfBytes(pcm)));
}

void LiveClient::sendSound(const std::vector<std::int16_t>& samples)
{
    if (!samples.empty())
        m_socket->send(LiveMessage::audioText(bytesOfSamples(samples)));
}

void LiveClient::sendAudioPause()
{
    if (!m_life.is(Stage::started))
        return;
    sendSound(m_resampler.finishToInt16());
    send(LiveMessage::audioStreamEnd());
    m_hasReacted = false;
    if (isFree())
        m_life.startDeadline(m_limits.quietTurn, [this] { soundWasLeftUnanswered(); });
}

/// It may have been a noise, and rightly so; then a fresh connection, which is given the same sound, says as little.
void LiveClient::soundWasLeftUnanswered()
{
    if (m_hasReacted || m_experience.leavesSoundUnanswered)
        return;
    if (std::exchange(m_experience.wasGivenUpOverSound, true))
        m_experience.leavesSoundUnanswered = true;
    else
        m_life.fail({Kind::wentSilent});
}

void LiveClient::sendMessage(const LiveMessageText& message)
{
    if (!m_life.is(Stage::started))
        return;
    m_isBusy = true;
    m_waiting.push_back(message);
    if (m_waiting.size() > mostWaiting)
        m_waiting.pop_front();
    sendWaiting();
}

void LiveClient::sendWaiting()
{
    if (!isFree() || !m_life.is(Stage::started))
        return;
    std::optional<std::string> last;
    for (LiveMessageText& message : std::exchange(m_waiting, {})) {
        if (last)
            send(LiveMessage::note(*last));
        if (message.jpeg)
            send(LiveMessage::image(*message.jpeg));
        last = std::move(message.text);
        m_isAnswerWanted = m_isAnswerWanted || message.answer == LiveMessageText::Answer::wanted;
    }
    const bool isAnswerWanted = std::exchange(m_isAnswerWanted, false);
    if (last)
        send(isAnswerWanted ? LiveMessage::text(*last) : LiveMessage::note(*last));
    else if (isAnswerWanted)
        send(LiveMessage::answerNow());
    if (!isAnswerWanted)
        return;
    m_hasReacted = false;
    modelIsAnswering();
}

/// A service that forgets to end its turn must not keep messages waiting for ever. One that has not even begun it is
/// gone, though its connection may still answer pings.
void LiveClient::modelIsAnswering()
{
    m_isAnswering = m_isBusy = true;
    m_life.startDeadline(m_limits.quietTurn, [this] {
        if (!m_hasReacted)
            return m_life.fail({Kind::wentSilent});
        turnEnded();
        reportIdleness();
    });
}

void LiveClient::requestAnswer()
{
    m_isBusy = m_isAnswerWanted = true;
    sendWaiting();
}

/// There is one model here, and it takes instructions as messages.
void LiveClient::sendVoiceInstructions(const std::string& text)
{
    sendMessage({.text = text});
}

/// Exactly one answer for each call that still wants one.
void LiveClient::sendToolResponse(const LiveFunctionResponse& response, LiveResponseScheduling scheduling)
{
    if (m_owed.erase(response.id) == 0)
        return;
    LiveFunctionResponse told = response;
    if (scheduling == LiveResponseScheduling::silent)
        told.response["scheduling"] = "SILENT";
    if (scheduling == LiveResponseScheduling::interrupt)
        told.response["scheduling"] = "INTERRUPT";
    send(LiveMessage::toolResponse({told}));
    m_hasReacted = m_hasReacted && scheduling == LiveResponseScheduling::silent;
    if (scheduling != LiveResponseScheduling::silent)
        modelIsAnswering();
    else if (isFree())
        m_life.later([this] { turnEnded(); });
}

void LiveClient::dropStale()
{
    std::erase_if(m_waiting,
        [](const LiveMessageText& message) { return message.lateness == LiveMessageText::Lateness::worthless; });
    m_life.later([this] { reportIdleness(); });
}

void LiveClient::close()
{
    if (m_life.is(Stage::closing) || m_life.is(Stage::closed))
        return;
    if (!m_life.is(Stage::started))
        return m_life.finish({});
    m_life.enter(Stage::closing);
    m_life.startDeadline(m_limits.toClose, [this] {
        m_life.finish({LiveClosure::normal, "closed without waiting", false, {}});
    });
    m_socket->close();
}

void LiveClient::send(const Json& message)
{
    if (m_life.is(Stage::starting) || m_life.is(Stage::started))
        m_socket->send(dumpJson(message));
}

} // namespace quorvell
