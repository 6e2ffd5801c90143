#include "Quorvell/session/SessionController.h"

#include "QuorvellCore/text/Characters.h"

#include <algorithm>
#include <utility>

namespace quorvell {

/// One connection and what came of it. Outlives its use as the live one until it has closed.
class SessionController::Line : public LiveConnectionObserver {
public:
    explicit Line(SessionController& session)
        : m_session(session)
    {
    }

    void liveEventReceived(const LiveServerEvent& event) override
    {
        if (isLive())
            m_session.handleEvent(event);
    }
    void liveReplyWritten(const std::string& text) override
    {
        if (isLive())
            m_session.m_turn.replyWritten(text);
    }
    void liveConnectionClosed(const LiveClosure& closure) override
    {
        isClosed = true;
        if (isLive())
            m_session.handleClose(closure);
        else
            m_session.handleRetiredClose(*this);
    }

    bool isClosed = false;
    std::string endReason; ///< Why it was taken out of use.
    std::unique_ptr<LiveConnection> connection;

private:
    bool isLive() const { return m_session.m_connection.live.get() == this; }

    SessionController& m_session;
};

SessionController::SessionController(Ports ports, SessionSettings settings)
    : m_ports(std::move(ports))
    , m_settings(std::move(settings))
    , m_turn({m_ports.scheduler, m_ports.player, m_ports.observer}, m_settings.replies, m_settings.patience)
    , m_self(std::make_shared<SessionController*>(this))
{
    m_listening.microphone.isGated = m_settings.microphone == SessionSettings::Microphone::onlySpeech;
}

SessionController::~SessionController() = default;

// ---- The story of a beginning

void SessionController::begin()
{
    if (m_connection.phase == SessionPhase::idle)
        start();
}

void SessionController::start()
{
    m_connection.start = m_ports.scheduler.now();
    m_connection.sessionID.clear();
    m_actions = {};
    m_usage = {};
    m_connection.live = makeConnection();
    setPhase(SessionPhase::connecting);
    connect();
}

std::unique_ptr<SessionController::Line> SessionController::makeConnection()
{
    auto line = std::make_unique<Line>(*this);
    line->connection = m_ports.connections(*line, LiveMedium::voice);
    ++m_connection.serial;
    return line;
}

void SessionController::connect()
{
    PromptOptions options;
    options.userName = m_settings.userName;
    options.familyName = m_settings.familyName;
    options.startMode = m_settings.helpMode;
    if (m_ports.whereAndWhen)
        options.whereAndWhen = m_ports.whereAndWhen();
    LiveSetup setup;
    setup.voiceInstructions = QuorvellPrompt::systemInstruction(options);
    setup.toolInstructions = QuorvellPrompt::liveBackendInstructions(options);
    setup.tools = m_ports.tools.offeredTools();
    setup.history.assign(m_turn.conversation().begin(), m_turn.conversation().end());
    m_connection.live->connection->open(setup);
}

void SessionController::beginConversation(const std::string& sessionID)
{
    if (m_connection.phase != SessionPhase::connecting)
        return;
    m_connection.sessionID = sessionID;
    m_listening.microphone.reset();
    m_ports.log.record(
        "session_started", {{"id", sessionID}, {"after_ms", (m_ports.scheduler.now() - m_connection.start).count()}});
    setPhase(SessionPhase::active);
    if (m_connection.waiting.empty() && m_settings.greeting == SessionSettings::Greeting::spoken)
        greet();
    m_connection.waitingTyped.clear();
    for (const LiveMessageText& message : std::exchange(m_connection.waiting, {}))
        deliver(message);
}

void SessionController::greet()
{
    // Where answers are shown, the model that writes them greets; else the voice does.
    if (m_settings.replies == SessionSettings::Replies::shown)
        return deliver({.text = QuorvellPrompt::greetingEvent(m_settings.userName, frontApp())});
    m_turn.open();
    m_connection.live->connection->sendVoiceInstructions(QuorvellPrompt::liveGreeting(m_settings.userName, frontApp()));
}

std::string SessionController::frontApp() const
{
    const std::string app = m_ports.frontApp ? m_ports.frontApp() : m_settings.frontApp;
    return app.empty() ? "their desktop" : app;
}

// ---- What the user and the program want

void SessionController::send(LiveMessageText message)
{
    if (m_connection.phase == SessionPhase::active)
        deliver(message);
    else if (m_connection.phase == SessionPhase::connecting)
        m_connection.waiting.push_back(std::move(message));
}

void SessionController::respond()
{
    if (m_connection.phase != SessionPhase::active)
        return;
    m_turn.open();
    m_turn.backendStarted();
    m_connection.live->connection->requestAnswer();
}

void SessionController::submitTyped(const TypedMessage& message, QuorvellPrompt::Entry entry)
{
    const std::string text = trimmed(message.text());
    if (text.empty())
        return;
    begin();
    m_turn.userTyped(text);
    const auto reply = message.spoken ? QuorvellPrompt::Reply::spoken : QuorvellPrompt::Reply::shown;
    if (m_connection.phase == SessionPhase::connecting)
        m_connection.waitingTyped.push_back(text);
    send({.text = QuorvellPrompt::typedMessage(text, entry, reply)});
}

void SessionController::microphoneCaptured(std::span<const std::uint8_t> pcm)
{
    if (m_connection.phase != SessionPhase::active || isMuted())
        return;
    LiveConnection& connection = *m_connection.live->connection;
    for (const MicGateOutput& output : m_listening.microphone.captured(pcm)) {
        if (output.isEndMark()) {
            connection.sendAudioPause();
        } else {
            connection.sendAudio(output.chunk->pcm);
            ++m_usage.microphoneChunks;
        }
    }
}

void SessionController::setMuted(Muting muting)
{
    m_listening.muting = muting;
}

void SessionController::pushToTalk(Key key)
{
    if (key == Key::pressed)
        begin();
}

void SessionController::interrupt()
{
    m_ports.player.stop();
}

void SessionController::setHelpMode(HelpMode mode)
{
    m_settings.helpMode = mode;
    m_ports.observer.helpModeChanged(mode);
}

void SessionController::stop(std::string_view reason)
{
    if (m_connection.phase == SessionPhase::idle)
        return;
    m_turn.end();
    Line& line = retireConnection(std::string(reason));
    setPhase(SessionPhase::idle);
    line.connection->close();
}

// ---- What the service reports

void SessionController::handleEvent(const LiveServerEvent& event)
{
    struct Handler {
        SessionController& session;

        void operator()(const live_event::SetupComplete& ready) { session.beginConversation(ready.sessionID); }
        void operator()(const live_event::Audio& sound) { session.m_turn.voiceSound(sound.pcm); }
        void operator()(const live_event::InputTranscript& words) { session.m_turn.userWords(words.text); }
        void operator()(const live_event::OutputTranscript& words) { session.m_turn.voiceWords(words.text); }
        void operator()(const live_event::ToolCall& tool) { session.handleToolCalls(tool.calls); }
        void operator()(const live_event::Delegated&) { session.m_turn.backendStarted(); }
        void operator()(const live_event::BackendIdle&) { session.m_turn.backendFinished(); }
        void operator()(const live_event::ServerError& error) { session.handleServerError(error); }
        void operator()(const live_event::Diagnostic& fact)
        {
            session.m_ports.log.record(fact.name, {{"detail", fact.detail}});
        }
        void operator()(const live_event::Usage& usage) { session.m_usage.tokens += usage.totalTokens; }
        void operator()(const live_event::BilledSeconds& usage) { session.m_usage.billedSeconds = usage.seconds; }
        void operator()(const live_event::ContextUsage& usage) { session.m_usage.contextRatio = usage.ratio; }
        // The remaining events belong to services and abilities that no connection here has.
        void operator()(const live_event::Thinking&) { session.m_turn.noteActivity(); }
        void operator()(const live_event::ToolCallCancellation&) { }
        void operator()(const live_event::GoAway&) { }
        void operator()(const live_event::ResumptionHandle&) { }
        void operator()(const live_event::Interrupted&) { }
        void operator()(const live_event::GenerationComplete&) { }
        void operator()(const live_event::TurnComplete&) { }
        void operator()(const live_event::VoiceActivity&) { }
    };
    std::visit(Handler{*this}, event);
}

void SessionController::handleToolCalls(const std::vector<LiveFunctionCall>& calls)
{
    m_turn.backendStarted();
    for (const LiveFunctionCall& call : calls) {
        if (isRepeated(call)) {
            m_ports.log.record("tool_call_repeated", {{"name", call.name}});
            continue;
        }
        m_ports.log.record("tool_called", {{"name", call.name}});
        m_ports.observer.toolCalled(call);
        runTool(call, replyTo(call));
    }
}

void SessionController::runTool(const LiveFunctionCall& call, ToolReply reply)
{
    const auto conversation = m_connection.phase == SessionPhase::active ? ToolDispatcher::Conversation::live
                                                                         : ToolDispatcher::Conversation::none;
    m_ports.tools.run(call, std::move(reply), conversation);
}

void SessionController::handleServerError(const live_event::ServerError& error)
{
    m_ports.log.record("server_error", {{"code", error.code.value_or("")}});
    m_ports.observer.problemArose("The service reported a problem: " + error.message);
    m_turn.problemShown();
}

void SessionController::handleClose(const LiveClosure& closure)
{
    m_ports.log.record("session_lost", {{"code", closure.code}, {"reason", closure.reason}});
    SessionEnd end;
    end.reason = closure.reason;
    end.isFailure = true;
    end.mustUserAct = closure.mustUserAct;
    end.sentence = closure.sentence;
    if (m_turn.isOpen() && m_connection.phase == SessionPhase::active)
        end.sentence += " What you asked last may not have been done.";
    end.unsent = std::exchange(m_connection.waitingTyped, {});
    m_connection.waiting.clear();
    retireConnection(closure.reason);
    takeAwayClosedLines();
    setPhase(SessionPhase::idle);
    m_turn.breakOff();
    m_ports.observer.conversationEnded(end);
}

void SessionController::handleRetiredClose(const Line& line)
{
    m_ports.log.record("session_ended", {{"reason", line.endReason}});
    SessionEnd end;
    end.reason = line.endReason;
    takeAwayClosedLines();
    m_ports.observer.conversationEnded(end);
}

// ---- Messages, tools and connections

void SessionController::deliver(const LiveMessageText& message)
{
    if (message.answer == LiveMessageText::Answer::wanted) {
        if (!m_turn.isOpen())
            m_turn.open();
        m_turn.backendStarted();
    }
    m_connection.live->connection->sendMessage(message);
}

bool SessionController::isRepeated(const LiveFunctionCall& call)
{
    auto& calls = m_actions.calls;
    if (std::find(calls.begin(), calls.end(), call.id) != calls.end())
        return true;
    calls.push_back(call.id);
    if (calls.size() > rememberedCalls)
        calls.pop_front();
    return false;
}

ToolReply SessionController::replyTo(const LiveFunctionCall& call)
{
    return ToolReply([self = std::weak_ptr(m_self), serial = m_connection.serial, id = call.id, name = call.name](
                         const Json& result) {
        if (const auto session = self.lock())
            (*session)->answerTool({id, name, result}, serial);
    });
}

void SessionController::answerTool(const LiveFunctionResponse& response, std::uint64_t askerSerial)
{
    const bool isWanted = m_connection.live && m_connection.serial == askerSerial;
    m_ports.log.record("tool_answered",
        {{"name", response.name}, {"failed", memberOf(response.response, "error") != nullptr}, {"sent", isWanted}});
    m_ports.observer.toolAnswered(response);
    if (!isWanted)
        return;
    m_turn.noteActivity();
    m_connection.live->connection->sendToolResponse(response, LiveResponseScheduling::whenIdle);
}

void SessionController::setPhase(SessionPhase phase)
{
    m_connection.phase = phase;
    m_ports.observer.phaseChanged(phase);
}

SessionController::Line& SessionController::retireConnection(std::string reason)
{
    m_connection.live->endReason = std::move(reason);
    m_connection.retired.push_back(std::move(m_connection.live));
    return *m_connection.retired.back();
}

void SessionController::takeAwayClosedLines()
{
    // Later, because a closed connection is still on the way out of its own report.
    m_connection.cleanUp = m_ports.scheduler.after(std::chrono::milliseconds::zero(),
        [this] { std::erase_if(m_connection.retired, [](const auto& line) { return line->isClosed; }); });
}

} // namespace quorvell
