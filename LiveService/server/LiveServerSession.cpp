#include "LiveService/server/LiveServerSession.h"

#include "LiveService/rules/RequestRules.h"
#include "QuorvellCore/live/wire/OpenAILiveClientParser.h"

#include <algorithm>
#include <utility>

namespace quorvell {

namespace {

LiveSessionEngine::Time now()
{
    return std::chrono::duration_cast<LiveSessionEngine::Time>(std::chrono::steady_clock::now().time_since_epoch());
}

} // namespace

LiveServerSession::LiveServerSession(std::unique_ptr<QWebSocket> socket, Surroundings surroundings)
    : m_socket(std::move(socket))
    , m_surroundings(std::move(surroundings))
    , m_engine(m_surroundings.ids, now())
{
    m_socket->setMaxAllowedIncomingMessageSize(longestMessage);
    m_socket->setMaxAllowedIncomingFrameSize(longestMessage);
    connect(m_socket.get(), &QWebSocket::textMessageReceived, this, &LiveServerSession::takeFrame);
    connect(m_socket.get(), &QWebSocket::binaryMessageReceived, this, [this] {
        takeMessage(openai_client::Malformed{"invalid_frame", "Send JSON as text frames.", {}});
    });
    connect(m_socket.get(), &QWebSocket::disconnected, this, [this] { m_surroundings.ended(); });
    connect(m_socket.get(), &QWebSocket::pong, this, [this] { m_awaitsPong = false; });
    m_tick.setSingleShot(true);
    m_tick.setTimerType(Qt::PreciseTimer);
    connect(&m_tick, &QTimer::timeout, this, [this] { carryOut(m_engine.tick(now())); });
    connect(&m_ping, &QTimer::timeout, this, &LiveServerSession::ping);
    m_ping.start(pingPeriod);
    wakeAtNextTick();
}

LiveServerSession::~LiveServerSession()
{
    // A socket that is closed by its end still speaks.
    disconnect(m_socket.get(), nullptr, this, nullptr);
}

void LiveServerSession::shutDown()
{
    carryOut(m_engine.shutDown());
}

std::unique_ptr<SpeechWorker> LiveServerSession::releaseSpeech()
{
    return std::move(m_speech);
}

/// Frames are taken in their order, also behind one that takes long to read.
void LiveServerSession::takeFrame(const QString& frame)
{
    if (!m_isReading) {
        readFrame(frame);
        return;
    }
    m_unreadLetters += frame.size();
    if (m_unreadLetters > longestUnread)
        m_socket->abort();
    else
        m_unread.push_back(frame);
}

void LiveServerSession::readFrame(const QString& frame)
{
    if (frame.size() < largeMessage) {
        takeMessage(OpenAILiveClientParser::parse(frame.toStdString()));
        return;
    }
    m_isReading = true;
    m_surroundings.thinking.post([reach = m_surroundings.reach, frame] {
        auto message = std::make_shared<OpenAILiveClientMessage>(OpenAILiveClientParser::parse(frame.toStdString()));
        reach([message](LiveServerSession& session) {
            session.takeMessage(*message);
            session.m_isReading = false;
            session.readWaiting();
        });
    });
}

void LiveServerSession::readWaiting()
{
    while (!m_isReading && !m_unread.empty()) {
        const QString next = m_unread.front();
        m_unread.pop_front();
        m_unreadLetters -= next.size();
        readFrame(next);
    }
}

void LiveServerSession::takeMessage(const OpenAILiveClientMessage& message)
{
    carryOut(m_engine.receive(message, now()));
}

void LiveServerSession::carryOut(EngineEffects effects)
{
    for (EngineEffect& effect : effects)
        std::visit([this](auto& kind) { carryOut(kind); }, effect);
    wakeAtNextTick();
}

void LiveServerSession::carryOut(const effect::SendText& send)
{
    if (m_socket->bytesToWrite() > longestUnsent) {
        m_socket->abort();
        return;
    }
    m_socket->sendTextMessage(QString::fromStdString(send.text));
}

void LiveServerSession::carryOut(const effect::PrepareSpeech& prepare)
{
    m_speech = m_surroundings.takeSpeech();
    m_speech->prepare(prepare.sampleRateHz, prepare.voice);
}

void LiveServerSession::carryOut(const effect::BeginListening&)
{
    m_speech->beginListening();
}

void LiveServerSession::carryOut(effect::Listen& listen)
{
    m_speech->listen(std::move(listen.samples));
}

void LiveServerSession::carryOut(const effect::FinishListening&)
{
    m_speech->finishListening([reach = m_surroundings.reach](HeardTurn turn) {
        reach([turn = std::move(turn)](
                  LiveServerSession& session) { session.carryOut(session.m_engine.heard(turn, now())); });
    });
}

void LiveServerSession::carryOut(effect::ThinkAboutWords& words)
{
    think([words = std::move(words)](
              const RuleSurroundings& around) { return RequestRules::answerWords(words.words, words.memory, around); });
}

void LiveServerSession::carryOut(effect::ThinkAboutResult& result)
{
    think([result = std::move(result)](const RuleSurroundings& around) {
        return RequestRules::answerResult(result.call, result.result, result.memory, around);
    });
}

void LiveServerSession::think(std::function<RuleStep(const RuleSurroundings&)> rules)
{
    RuleSurroundings around{m_engine.tools(), m_surroundings.wallClock(), m_surroundings.calendar};
    m_surroundings.thinking.post([reach = m_surroundings.reach, around = std::move(around), rules = std::move(rules)] {
        reach([step = rules(around)](
                  LiveServerSession& session) { session.carryOut(session.m_engine.thought(step, now())); });
    });
}

void LiveServerSession::carryOut(effect::Voice& voice)
{
    m_speech->speak(voice.reply, std::move(voice.sentences), [reach = m_surroundings.reach](VoicePiece piece) {
        reach([piece = std::move(piece)](
                  LiveServerSession& session) { session.carryOut(session.m_engine.voiced(piece, now())); });
    });
}

void LiveServerSession::carryOut(const effect::StopVoice&)
{
    m_speech->stopSpeaking();
}

void LiveServerSession::carryOut(const effect::CloseConnection& close)
{
    m_socket->close(static_cast<QWebSocketProtocol::CloseCode>(close.code), QString::fromStdString(close.reason));
    // A client that does not answer the close is not waited for.
    QTimer::singleShot(closePatience, this, [this] { m_socket->abort(); });
}

void LiveServerSession::wakeAtNextTick()
{
    const auto next = m_engine.nextTick();
    if (!next)
        m_tick.stop();
    else
        m_tick.start(std::max(*next - now(), LiveSessionEngine::Time::zero()));
}

void LiveServerSession::ping()
{
    if (m_awaitsPong) {
        m_socket->abort();
        return;
    }
    m_awaitsPong = true;
    m_socket->ping();
}

} // namespace quorvell
