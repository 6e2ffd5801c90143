// SPDX-License-Identifier: MIT
#include "Quorvell/connections/openai/OpenAILiveClient.h"

#include "Quorvell/connections/openai/OpenAIPeerTransport.h"
#include "Quorvell/connections/openai/OpenAISocketTransport.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveEventMapper.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveMessage.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveParser.h"
#include "QuorvellCore/text/CodeWord.h"

#include <utility>

namespace quorvell {

namespace {

using Kind = ConnectionFailure::Kind;
using Way = OpenAIRoute::Way;

/// A create is refused when a response still runs over there. It is tried again at once, then after growing pauses.
constexpr int mostRefusedCreates = 6;

constexpr std::string_view questionPrefix = "question_";

} // namespace

OpenAILiveClient::OpenAILiveClient(LiveAccessSource& accessSource, LiveModelSettings models,
    LiveConnectionObserver& observer, ServiceExperience& experience, LiveTimeLimits limits, OpenAIRoute route)
    : m_experience(experience)
    , m_limits(limits)
    , m_route(std::move(route))
    , m_silence({limits.owedWord, limits.toSayItIsThere}, {[this] { doubt(); }, [this] { wentSilent(); }})
    , m_life(accessSource, observer, [this] { m_transport.reset(); })
{
    m_options.model = std::move(models.voiceModel);
    m_options.voice = std::move(models.voice);
    m_options.backendModel = std::move(models.backendModel);
    m_options.reasoningEffort = std::move(models.options.reasoningEffort);
    m_options.reasoningSummary = std::move(models.options.reasoningSummary);
    m_options.serviceTier = std::move(models.options.serviceTier);
    m_options.verbosity = std::move(models.options.verbosity);
    m_options.maxOutputTokens = models.options.maxOutputTokens;
    m_options.sampleRate = OpenAILiveMessage::sampleRate;
}

// ---- Opening

void OpenAILiveClient::open(const LiveSetup& setup)
{
    if (!m_life.is(Stage::unopened))
        return;
    m_options.instructions = setup.voiceInstructions;
    m_options.backendInstructions = setup.toolInstructions;
    m_options.tools = setup.tools;
    m_options.history = setup.history;
    m_life.locate([this] { openTransport(); });
}

void OpenAILiveClient::openTransport()
{
    m_life.enter(Stage::opening);
    m_life.stopDeadline();
    m_experience.dropRefused(m_options);
    OpenAITransport::Reports reports;
    reports.opened = [this] { transportOpened(); };
    reports.textReceived = [this](const std::string& text) { textReceived(text); };
    reports.soundReceived = [this](const Bytes& pcm) {
        m_silence.heard(owes());
        m_life.report(live_event::Audio{pcm});
    };
    reports.closed = [this](const ConnectionFailure& failure) { transportClosed(failure); };
    if (way() == Way::peer)
        m_transport = std::make_unique<OpenAIPeerTransport>(std::move(reports), m_limits);
    else
        m_transport = std::make_unique<OpenAISocketTransport>(std::move(reports), m_limits);
    m_transport->open(m_life.access(), m_options);
}

/// Later, because the old transport is still on the way out of its own report.
void OpenAILiveClient::openAgain()
{
    m_life.enter(Stage::locating);
    m_life.later([this] {
        if (m_life.is(Stage::locating))
            openTransport();
    });
}

void OpenAILiveClient::transportOpened()
{
    m_life.enter(Stage::starting);
    m_life.startDeadline(m_limits.toStart, [this] { m_life.fail({Kind::startedTooSlowly}); });
}

/// Each option is dropped at most once in the life of the program.
bool OpenAILiveClient::retryWithout(RefusedSetting setting)
{
    if (!m_experience.drop(m_options, setting))
        return false;
    m_life.report(live_event::Diagnostic{"responses_setting_dropped", std::string(nameOf(setting))});
    m_life.report(live_event::Diagnostic{"session_request_retried", {}});
    openAgain();
    return true;
}

/// Blocked media, or a service that knows no such request, says nothing against the other way.
bool OpenAILiveClient::tryNextWay(const ConnectionFailure& failure)
{
    const bool isUnknownThere = failure.kind == Kind::refusedRequest
        && (failure.code == 404 || failure.code == 405 || failure.code == 415 || failure.code == 501);
    const bool isAboutTheWay = failure.kind == Kind::mediaBlocked || failure.kind == Kind::ownFault || isUnknownThere;
    if (way() != Way::peer || !isAboutTheWay)
        return false;
    if (failure.kind == Kind::mediaBlocked && m_route.wasBlocked)
        m_route.wasBlocked(way());
    if (m_tried + 1 == m_route.ways.size())
        return false;
    ++m_tried;
    m_life.report(live_event::Diagnostic{"transport_changed", "websocket"});
    openAgain();
    return true;
}

void OpenAILiveClient::transportClosed(const ConnectionFailure& failure)
{
    if (m_life.is(Stage::closing))
        return m_life.finish({LiveClosure::normal, codeWord(m_closeReason), false, {}});
    if (m_life.is(Stage::locating) || m_life.is(Stage::closed))
        return;
    const bool isOpening = m_life.is(Stage::opening);
    if (isOpening && failure.kind == Kind::refusedRequest
        && retryWithout(OpenAILiveEndpoint::refusedSetting(failure.code, failure.detail)))
        return;
    if (isOpening && tryNextWay(failure))
        return;
    ConnectionFailure told = failure;
    if (!m_closeReason.empty())
        told.detail = m_closeReason;
    m_life.fail(told);
}

// ---- What the service reports

void OpenAILiveClient::textReceived(const std::string& text)
{
    for (OpenAILiveEvent& event : OpenAILiveParser::parse(text)) {
        if (m_life.is(Stage::closed))
            return;
        handle(std::move(event));
    }
    m_silence.heard(owes());
}

void OpenAILiveClient::handle(OpenAILiveEvent event)
{
    if (!applyToFlow(event))
        return;
    if (const auto* text = std::get_if<openai_event::BackendText>(&event))
        m_life.reportWritten(text->text);
    for (const LiveServerEvent& mapped : OpenAILiveEventMapper::map(std::move(event)))
        m_life.report(mapped);
    reportIdleness();
}

/// True when the session is to hear of the event as well.
bool OpenAILiveClient::applyToFlow(const OpenAILiveEvent& event)
{
    if (std::holds_alternative<openai_event::Started>(event)) {
        return applyStart();
    } else if (const auto* delegated = std::get_if<openai_event::Delegated>(&event)) {
        m_delegationID = delegated->delegationID;
    } else if (const auto* begun = std::get_if<openai_event::BackendStarted>(&event)) {
        m_flow.started(begun->responseID);
        m_refusedCreates = 0;
    } else if (const auto* end = std::get_if<openai_event::BackendEnded>(&event)) {
        return applyEnd(*end);
    } else if (const auto* call = std::get_if<openai_event::FunctionCall>(&event)) {
        return applyCall(*call);
    } else if (const auto* error = std::get_if<openai_event::Error>(&event)) {
        return applyError(*error);
    } else if (const auto* closed = std::get_if<openai_event::Closed>(&event)) {
        m_closeReason = closed->reason;
        m_transport->close();
    }
    return true;
}

bool OpenAILiveClient::applyStart()
{
    if (!m_life.is(Stage::starting))
        return false;
    m_life.enter(Stage::started);
    m_life.stopDeadline();
    if (m_route.worked)
        m_route.worked(way());
    if (!std::exchange(m_experience.wasAsked, true))
        askWhetherItIsThere(); // So that its silence means something later.
    return true;
}

bool OpenAILiveClient::applyEnd(const openai_event::BackendEnded& end)
{
    if (!m_ends.isFirst(end.responseID))
        return false;
    sendAll(m_flow.ended(end.responseID));
    if (end.status == "failed")
        m_life.report(live_event::ServerError{"backend_failed", "The model could not finish its answer. Ask again."});
    return true;
}

bool OpenAILiveClient::applyCall(const openai_event::FunctionCall& call)
{
    if (!m_calls.isNew(call.callID))
        return false;
    m_flow.called(call.callID);
    return true;
}

bool OpenAILiveClient::applyError(const openai_event::Error& error)
{
    if (m_life.is(Stage::starting)) {
        sessionRefused(error);
        return false;
    }
    const std::string about = error.clientEventID.value_or("");
    const bool isAboutCreate = about.starts_with("create_");
    if (isAboutCreate)
        retryCreate(error.clientEventID);
    return !isAboutCreate && !answersQuestion(error);
}

// ---- Silence

/// This protocol has no such question, but an item without its content changes nothing and is answered with an error.
void OpenAILiveClient::askWhetherItIsThere()
{
    constexpr int late = 4; // An answer may come long after it was given up, and is no news to the user even then.
    m_isQuestionOpen = true;
    ++m_questions;
    m_life.later([this, question = m_questions] { m_isQuestionOpen = m_isQuestionOpen && question != m_questions; },
        late * m_limits.toSayItIsThere);
    send({{"type", "response.item.create"}, {"event_id", std::string(questionPrefix) + std::to_string(m_questions)}});
}

/// Some services do not say which event an error is about.
bool OpenAILiveClient::answersQuestion(const openai_event::Error& error)
{
    const bool isAnswer = error.clientEventID ? error.clientEventID->starts_with(questionPrefix) : m_isQuestionOpen;
    if (isAnswer) {
        m_isQuestionOpen = false;
        m_experience.answersQuestions = true;
    }
    return isAnswer;
}

void OpenAILiveClient::doubt()
{
    m_life.report(live_event::Diagnostic{"service_doubted", {}});
    askWhetherItIsThere();
}

/// A service that never answered such a question may be thinking, or have heard a noise: only what it has not even
/// begun is given up then. How long the user waits for the rest is the session's affair.
void OpenAILiveClient::wentSilent()
{
    const bool isNothingBegun = m_flow.createInFlight && m_flow.running.empty();
    if (m_experience.answersQuestions || isNothingBegun)
        m_life.fail({Kind::wentSilent});
}

SilenceWatch::Owes OpenAILiveClient::owes() const
{
    const bool isInTheMiddle = m_flow.createInFlight || !m_flow.running.empty();
    return isInTheMiddle ? SilenceWatch::Owes::more : SilenceWatch::Owes::nothing;
}

void OpenAILiveClient::retryCreate(const std::optional<std::string>& clientEventID)
{
    m_life.report(live_event::Diagnostic{"response_create_refused", {}});
    if (++m_refusedCreates > mostRefusedCreates)
        return m_life.fail({Kind::createRefused});
    if (m_refusedCreates == 1)
        return sendAll(m_flow.rejected(clientEventID));
    const auto pause = m_limits.firstCreatePause * (1 << (m_refusedCreates - 2));
    m_life.later([this, clientEventID] { sendAll(m_flow.rejected(clientEventID)); }, pause);
}

void OpenAILiveClient::sessionRefused(const openai_event::Error& error)
{
    // The WebSocket shows no body of a refusal, so the error event stands in for one.
    constexpr int badRequest = 400;
    const std::string message = error.message.value_or("It gave no reason.");
    if (!retryWithout(OpenAILiveEndpoint::refusedSetting(badRequest, error.code.value_or("") + " " + message)))
        m_life.fail({Kind::refusedSession, 0, message});
}

void OpenAILiveClient::reportIdleness()
{
    if (!m_flow.isIdle()) {
        m_isBusy = true;
        return;
    }
    if (!std::exchange(m_isBusy, false))
        return;
    m_delegationID.reset();
    m_life.report(live_event::BackendIdle{});
}

// ---- What the session wants

void OpenAILiveClient::sendAudio(std::span<const std::uint8_t> pcm)
{
    if (!m_life.is(Stage::started))
        return;
    m_silence.soundSent();
    m_transport->sendSound(pcm);
}

void OpenAILiveClient::sendAudioPause()
{
    // This protocol has no word for it: the service hears that nothing comes, and says what it has heard.
    if (m_life.is(Stage::started))
        m_silence.soundEnded();
}

void OpenAILiveClient::sendMessage(const LiveMessageText& message)
{
    if (m_life.is(Stage::closed))
        return;
    Json item = OpenAILiveMessage::backendMessage(
        message.text, message.jpeg ? std::optional(LiveImage{*message.jpeg}) : std::nullopt);
    if (message.jpeg && !fits(item)) {
        m_life.report(live_event::Diagnostic{"picture_too_large", std::to_string(message.jpeg->size())});
        item = OpenAILiveMessage::backendMessage(message.text + "\n(The picture was too large to be sent.)");
    }
    m_isBusy = true;
    sendAll(m_flow.message({std::move(item), message.answer == LiveMessageText::Answer::wanted,
        message.lateness == LiveMessageText::Lateness::worthless}));
}

void OpenAILiveClient::requestAnswer()
{
    m_isBusy = true;
    m_flow.needsCreate = true;
    sendAll(m_flow.flush());
}

void OpenAILiveClient::sendVoiceInstructions(const std::string& text)
{
    send(OpenAILiveMessage::instructions(text, {m_delegationID, std::nullopt}));
}

/// This protocol voices every answer once the model is idle, so the scheduling has no say here.
void OpenAILiveClient::sendToolResponse(const LiveFunctionResponse& response, LiveResponseScheduling)
{
    Json output = OpenAILiveMessage::functionOutput(response.id, dumpJson(response.response)).front();
    if (!fits(output)) {
        m_life.report(live_event::Diagnostic{"tool_result_too_large", codeWord(response.name)});
        const Json tooLarge{{"error", "The result was too large to be sent. Ask for less of it."}};
        output = OpenAILiveMessage::functionOutput(response.id, dumpJson(tooLarge)).front();
    }
    m_isBusy = true;
    sendAll(m_flow.output(response.id, std::move(output)));
}

void OpenAILiveClient::dropStale()
{
    m_flow.dropStale();
}

void OpenAILiveClient::close()
{
    if (m_life.is(Stage::closing) || m_life.is(Stage::closed))
        return;
    if (!m_life.is(Stage::started))
        return m_life.finish({});
    send(OpenAILiveMessage::close());
    m_life.enter(Stage::closing);
    m_life.startDeadline(m_limits.toClose, [this] {
        m_life.finish({LiveClosure::normal, "closed without waiting", false, {}});
    });
}

// ---- The way out

/// What is too large for the transport is made smaller first.
bool OpenAILiveClient::fits(const Json& message) const
{
    return !m_transport || dumpJson(message).size() <= m_transport->largestText();
}

void OpenAILiveClient::send(const Json& message)
{
    if (m_life.is(Stage::starting) || m_life.is(Stage::started))
        m_transport->send(dumpJson(message));
}

void OpenAILiveClient::sendAll(const std::vector<Json>& messages)
{
    for (const Json& message : messages)
        send(message);
    if (m_flow.createInFlight && m_life.is(Stage::started))
        m_silence.asked();
}

} // namespace quorvell
