#include "Quorvell/connections/OpenAILiveClient.h"

#include "QuorvellCore/live/wire/OpenAILiveEventMapper.h"
#include "QuorvellCore/live/wire/OpenAILiveMessage.h"
#include "QuorvellCore/live/wire/OpenAILiveParser.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

using Kind = ConnectionFailure::Kind;

/// Sound that the network does not take is dropped rather than hoarded: half a minute of it, as text.
constexpr qint64 mostUnsentBytes = 2 * 1024 * 1024;
constexpr std::size_t rememberedCalls = 256;
/// A create is refused when a response still runs over there. It is tried again at once, then after growing pauses.
constexpr int mostRefusedCreates = 6;

} // namespace

OpenAILiveClient::OpenAILiveClient(
    LiveAccessSource& accessSource, LiveModelSettings models, LiveConnectionObserver& observer, LiveTimeLimits limits)
    : m_accessSource(accessSource)
    , m_observer(observer)
    , m_limits(limits)
{
    m_options.model = std::move(models.voiceModel);
    m_options.voice = std::move(models.voice);
    m_options.backendModel = std::move(models.backendModel);
    m_options.reasoningEffort = std::move(models.reasoningEffort);
    m_options.reasoningSummary = std::move(models.reasoningSummary);
    m_options.serviceTier = std::move(models.serviceTier);
    m_options.verbosity = std::move(models.verbosity);
    m_options.maxOutputTokens = models.maxOutputTokens;
    m_options.sampleRate = OpenAILiveMessage::sampleRate;
}

// ---- Opening

void OpenAILiveClient::open(const LiveSetup& setup)
{
    if (m_stage != Stage::unopened)
        return;
    m_stage = Stage::locating;
    m_options.instructions = setup.voiceInstructions;
    m_options.backendInstructions = setup.toolInstructions;
    m_options.tools = setup.tools;
    m_options.history = setup.history;
    // Later, so that nothing is reported from inside this call even when the service is found at once.
    QTimer::singleShot(0, &m_context, [this] {
        m_accessSource.find([this, guard = QPointer<QObject>(&m_context)](const LiveAccessSource::Found& found) {
            if (guard)
                useAccess(found);
        });
    });
}

void OpenAILiveClient::useAccess(const LiveAccessSource::Found& found)
{
    if (m_stage != Stage::locating)
        return;
    if (!found.access)
        return finish({LiveClosure::abnormal, "no service", false, found.problem});
    m_access = *found.access;
    openSocket();
}

void OpenAILiveClient::openSocket()
{
    m_stage = Stage::opening;
    m_deadline.reset();
    LiveSocket::Reports reports;
    reports.opened = [this] { socketOpened(); };
    reports.textReceived = [this](const std::string& text) { textReceived(text); };
    reports.closed = [this](const ConnectionFailure& failure) { socketClosed(failure); };
    m_socket = std::make_unique<LiveSocket>(std::move(reports), m_limits);
    m_socket->open(m_access.endpoint.request(m_access.key));
}

void OpenAILiveClient::socketOpened()
{
    m_stage = Stage::starting;
    startDeadline(m_limits.toStart, &OpenAILiveClient::startedTooSlowly);
    send(OpenAILiveMessage::sessionStart(m_options, OpenAILiveMessage::AudioFormat::declared));
}

/// Each option is dropped at most once: what is absent cannot be refused again.
bool OpenAILiveClient::retryWithout(RefusedSetting setting)
{
    std::optional<std::string>* option = nullptr;
    if (setting == RefusedSetting::serviceTier)
        option = &m_options.serviceTier;
    if (setting == RefusedSetting::summary)
        option = &m_options.reasoningSummary;
    if (option == nullptr || !option->has_value())
        return false;
    option->reset();
    report(live_event::Diagnostic{"responses_setting_dropped", std::to_string(static_cast<int>(setting))});
    report(live_event::Diagnostic{"session_request_retried", {}});
    m_stage = Stage::locating;
    // Later, because the old socket is still on the way out of its own report.
    QTimer::singleShot(0, &m_context, [this] {
        if (m_stage == Stage::locating)
            openSocket();
    });
    return true;
}

void OpenAILiveClient::socketClosed(const ConnectionFailure& failure)
{
    if (m_stage == Stage::closing)
        return finish({LiveClosure::normal, m_closeReason, false, {}});
    if (m_stage == Stage::locating || m_stage == Stage::closed)
        return;
    if (failure.kind == Kind::refusedUpgrade
        && retryWithout(OpenAILiveEndpoint::refusedSetting(failure.code, failure.detail)))
        return;
    ConnectionFailure told = failure;
    if (!m_closeReason.empty())
        told.detail = m_closeReason;
    fail(told);
}

// ---- What the service reports

void OpenAILiveClient::textReceived(const std::string& text)
{
    for (OpenAILiveEvent& event : OpenAILiveParser::parse(text)) {
        if (m_stage == Stage::closed)
            return;
        handle(std::move(event));
    }
}

void OpenAILiveClient::handle(OpenAILiveEvent event)
{
    if (!applyToFlow(event))
        return;
    if (const auto* text = std::get_if<openai_event::BackendText>(&event); text && m_stage == Stage::started)
        m_observer.liveReplyWritten(text->text);
    for (const LiveServerEvent& mapped : OpenAILiveEventMapper::map(std::move(event)))
        report(mapped);
    reportIdleness();
}

/// True when the session is to hear of the event as well.
bool OpenAILiveClient::applyToFlow(const OpenAILiveEvent& event)
{
    if (std::holds_alternative<openai_event::Started>(event)) {
        if (m_stage != Stage::starting)
            return false;
        m_stage = Stage::started;
        m_deadline.reset();
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
        m_socket->close();
    }
    return true;
}

bool OpenAILiveClient::applyEnd(const openai_event::BackendEnded& end)
{
    if (!m_ends.isFirst(end.responseID))
        return false;
    sendAll(m_flow.ended(end.responseID));
    if (end.status == "failed")
        report(live_event::ServerError{"backend_failed", "The model could not finish its answer. Ask again."});
    return true;
}

bool OpenAILiveClient::applyCall(const openai_event::FunctionCall& call)
{
    if (std::find(m_calls.begin(), m_calls.end(), call.callID) != m_calls.end())
        return false;
    m_calls.push_back(call.callID);
    if (m_calls.size() > rememberedCalls)
        m_calls.pop_front();
    m_flow.called(call.callID);
    return true;
}

bool OpenAILiveClient::applyError(const openai_event::Error& error)
{
    if (m_stage == Stage::starting) {
        sessionRefused(error);
        return false;
    }
    const bool isAboutCreate = error.clientEventID && error.clientEventID->starts_with("create_");
    if (isAboutCreate)
        retryCreate(error.clientEventID);
    return !isAboutCreate;
}

void OpenAILiveClient::retryCreate(const std::optional<std::string>& clientEventID)
{
    report(live_event::Diagnostic{"response_create_refused", {}});
    if (++m_refusedCreates > mostRefusedCreates)
        return fail({Kind::createRefused});
    if (m_refusedCreates == 1)
        return sendAll(m_flow.rejected(clientEventID));
    const auto pause = m_limits.firstCreatePause * (1 << (m_refusedCreates - 2));
    QTimer::singleShot(pause, &m_context, [this, clientEventID] { sendAll(m_flow.rejected(clientEventID)); });
}

void OpenAILiveClient::sessionRefused(const openai_event::Error& error)
{
    // The WebSocket shows no body of a refusal, so the error event stands in for one.
    constexpr int badRequest = 400;
    const std::string message = error.message.value_or("It gave no reason.");
    if (!retryWithout(OpenAILiveEndpoint::refusedSetting(badRequest, error.code.value_or("") + " " + message)))
        fail({Kind::refusedSession, 0, message});
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
    report(live_event::BackendIdle{});
}

// ---- What the session wants

void OpenAILiveClient::sendAudio(std::span<const std::uint8_t> pcm)
{
    if (m_stage == Stage::started && m_socket->unsentBytes() < mostUnsentBytes)
        m_socket->send(OpenAILiveMessage::audioText(pcm));
}

void OpenAILiveClient::sendAudioPause()
{
    // This protocol has no word for it: the service hears that nothing comes.
}

void OpenAILiveClient::sendMessage(const LiveMessageText& message)
{
    std::optional<LiveImage> image;
    if (message.jpeg)
        image = LiveImage{*message.jpeg};
    m_isBusy = true;
    sendAll(m_flow.message({OpenAILiveMessage::backendMessage(message.text, image),
        message.answer == LiveMessageText::Answer::wanted, message.lateness == LiveMessageText::Lateness::worthless}));
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
    const auto messages = OpenAILiveMessage::functionOutput(response.id, dumpJson(response.response));
    m_isBusy = true;
    sendAll(m_flow.output(response.id, messages.front()));
}

void OpenAILiveClient::dropStale()
{
    m_flow.dropStale();
}

void OpenAILiveClient::close()
{
    if (m_stage == Stage::closing || m_stage == Stage::closed)
        return;
    if (m_stage != Stage::started)
        return finish({});
    send(OpenAILiveMessage::close());
    m_stage = Stage::closing;
    startDeadline(m_limits.toClose, &OpenAILiveClient::closedTooSlowly);
}

// ---- Ways out

void OpenAILiveClient::report(const LiveServerEvent& event)
{
    // A service that talks before the session has started, or after its end, is not listened to.
    const bool isForTheLog = std::holds_alternative<live_event::Diagnostic>(event);
    if (m_stage == Stage::started || (isForTheLog && m_stage != Stage::closed))
        m_observer.liveEventReceived(event);
}

void OpenAILiveClient::send(const Json& message)
{
    if (m_stage == Stage::starting || m_stage == Stage::started)
        m_socket->send(dumpJson(message));
}

void OpenAILiveClient::sendAll(const std::vector<Json>& messages)
{
    for (const Json& message : messages)
        send(message);
}

void OpenAILiveClient::startDeadline(std::chrono::milliseconds limit, void (OpenAILiveClient::*action)())
{
    m_deadline = std::make_unique<QTimer>();
    m_deadline->setSingleShot(true);
    QObject::connect(m_deadline.get(), &QTimer::timeout, &m_context, [this, action] { (this->*action)(); });
    m_deadline->start(limit);
}

void OpenAILiveClient::startedTooSlowly()
{
    fail({Kind::startedTooSlowly});
}

void OpenAILiveClient::closedTooSlowly()
{
    finish({LiveClosure::normal, "closed without waiting", false, {}});
}

void OpenAILiveClient::fail(const ConnectionFailure& failure)
{
    finish(failure.closure(m_access));
}

void OpenAILiveClient::finish(const LiveClosure& closure)
{
    if (m_stage == Stage::closed)
        return;
    m_stage = Stage::closed;
    // Later, because a timer or the socket may still be on the way out of its own report.
    QTimer::singleShot(0, &m_context, [this, closure] {
        m_deadline.reset();
        m_socket.reset();
        m_observer.liveConnectionClosed(closure);
    });
}

} // namespace quorvell
