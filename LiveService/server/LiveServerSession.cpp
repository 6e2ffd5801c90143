// SPDX-License-Identifier: MIT
#include "LiveService/server/LiveServerSession.h"

#include "Understanding/dialogue/PlainReplies.h"
#include "Understanding/requests/HeardRules.h"
#include "Understanding/requests/RequestRules.h"
#include "Understanding/requests/UtteranceShape.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

namespace quorvell {

namespace {

constexpr int policyViolation = 1008;
constexpr int internalError = 1011;
constexpr std::size_t handlesKept = 2; ///< The client may not have got the newest one.

LiveSessionEngine::Time sessionNow()
{
    return std::chrono::duration_cast<LiveSessionEngine::Time>(std::chrono::steady_clock::now().time_since_epoch());
}

} // namespace

LiveServerSession::LiveServerSession(
    std::unique_ptr<SessionTransport> transport, std::shared_ptr<SessionCodec> codec, Surroundings surroundings)
    : m_transport(std::move(transport))
    , m_codec(std::move(codec))
    , m_surroundings(std::move(surroundings))
    , m_engine(m_surroundings.ids, sessionNow(), m_codec->spokenRateHz())
    , m_wire(m_surroundings.faults)
{
    m_tick.setSingleShot(true);
    m_tick.setTimerType(Qt::PreciseTimer);
    connect(&m_tick, &QTimer::timeout, this, [this] { carryOut(m_engine.tick(sessionNow())); });
    m_wireTimer.setSingleShot(true);
    connect(&m_wireTimer, &QTimer::timeout, this, &LiveServerSession::sendDue);
    m_transport->begin({[this](std::string text) { takeText(std::move(text)); },
        [this] {
            take(openai_client::Malformed{"invalid_frame", "Send JSON as text frames.", {}});
        },
        [this](Bytes pcm) { take(openai_client::InputAudio{std::move(pcm)}); }, [this] { m_surroundings.ended(); }});
    if (m_surroundings.model)
        m_engine.useModel({*m_surroundings.model, [this] { return nowInWords(); }});
    startFaultTimers();
    wakeAtNextTick();
}

std::string LiveServerSession::nowInWords() const
{
    const Instant now = m_surroundings.wallClock();
    const CalendarParts parts = m_surroundings.calendar.parts(now);
    std::array<char, 32> clock{};
    std::snprintf(clock.data(), clock.size(), " %d, %02d:%02d", parts.year, parts.hour, parts.minute);
    return PlainReplies::day(now, m_surroundings.calendar) + clock.data() + " (" + m_surroundings.calendar.zone() + ")";
}

void LiveServerSession::end(std::string_view reason, int closeCode)
{
    carryOut(m_engine.end(reason, closeCode));
}

std::unique_ptr<SpeechWorker> LiveServerSession::releaseSpeech()
{
    return std::move(m_speech);
}

/// Messages are taken in their order, also behind one that takes long to read.
void LiveServerSession::takeText(std::string text)
{
    if (m_isFrozen)
        return;
    if (!m_isReading) {
        read(std::move(text));
        return;
    }
    m_unreadBytes += text.size();
    if (m_unreadBytes > longestUnread)
        m_transport->abort();
    else
        m_unread.push_back(std::move(text));
}

void LiveServerSession::read(std::string text)
{
    if (text.size() < largeMessage) {
        takeIncoming(m_codec->read(text));
        return;
    }
    m_isReading = true;
    m_surroundings.thinking.post([reach = m_surroundings.reach, codec = m_codec, text = std::move(text)] {
        reach([incoming = codec->read(text)](LiveServerSession& session) {
            session.takeIncoming(incoming);
            session.m_isReading = false;
            session.readWaiting();
        });
    });
}

void LiveServerSession::readWaiting()
{
    while (!m_isReading && !m_unread.empty()) {
        std::string next = std::move(m_unread.front());
        m_unread.pop_front();
        m_unreadBytes -= next.size();
        read(std::move(next));
    }
}

void LiveServerSession::takeIncoming(const SessionCodec::Incoming& incoming)
{
    m_offersHandles = m_offersHandles || incoming.wantsHandles;
    if (incoming.handle)
        resume(*incoming.handle);
    m_engine.remember(incoming.earlier);
    for (const OpenAILiveClientMessage& message : incoming.messages)
        take(message);
    if (incoming.soundPauses && !m_isFrozen)
        carryOut(m_engine.soundPaused());
    if (incoming.wantsHandles && m_engine.isOpen())
        offerResumption();
}

void LiveServerSession::take(const OpenAILiveClientMessage& message)
{
    if (!m_isFrozen && !isRefusedOnPurpose(message))
        carryOut(m_engine.receive(message, sessionNow()));
}

void LiveServerSession::resume(const std::string& handle)
{
    auto state = m_surroundings.faults.find(Fault::Kind::rejectHandle)
        ? std::nullopt
        : m_surroundings.resumption.find(handle, sessionNow());
    if (state)
        m_engine.resume(std::move(*state));
    else
        end("session_not_found", policyViolation);
}

void LiveServerSession::carryOut(EngineEffects effects)
{
    for (EngineEffect& effect : effects)
        std::visit([this](auto& kind) { carryOut(kind); }, effect);
    wakeAtNextTick();
}

void LiveServerSession::carryOut(const effect::Tell& tell)
{
    if (const auto* sound = std::get_if<news::Sound>(&tell.news); sound && !m_isFrozen)
        m_transport->sendSound(sound->samples);
    if (std::holds_alternative<news::Interrupted>(tell.news))
        m_transport->dropSound();
    auto outgoing = m_codec->write(exaggerated(tell.news));
    for (std::string& text : outgoing.texts)
        send(std::move(text));
    if (outgoing.close)
        end(outgoing.close->reason, outgoing.close->code);
    if (m_offersHandles && std::holds_alternative<news::TurnOver>(tell.news))
        offerResumption();
    if (std::holds_alternative<news::ToolCalled>(tell.news) && m_surroundings.faults.find(Fault::Kind::closeInTool))
        end("server_error", internalError);
}

void LiveServerSession::carryOut(const effect::PrepareSpeech& prepare)
{
    m_speech = m_surroundings.takeSpeech();
    m_speech->prepare(prepare.heardRateHz, prepare.spokenRateHz, prepare.voice);
}

void LiveServerSession::carryOut(const effect::ExpectSpeech&)
{
    m_speech->expectSpeech();
}

void LiveServerSession::carryOut(const effect::BeginListening&)
{
    m_speech->beginListening();
}

void LiveServerSession::carryOut(effect::Listen& listen)
{
    m_speech->listen(std::move(listen.samples));
}

void LiveServerSession::carryOut(effect::JudgePause& judge)
{
    RuleSurroundings around{{m_surroundings.wallClock(), m_surroundings.calendar}, m_engine.tools()};
    m_speech->readSoFar(
        [judge = std::move(judge), around = std::move(around), reach = m_surroundings.reach](const std::string& words) {
            const auto shape = words.empty() ? std::nullopt : std::optional(shapeOf(words, judge.memory, around));
            reach([pause = judge.pause, shape](
                      LiveServerSession& session) { session.carryOut(session.m_engine.judged(pause, shape)); });
            return shape == UtteranceShape::whole ? SpeechWorker::Likely::end : SpeechWorker::Likely::goesOn;
        });
}

void LiveServerSession::carryOut(const effect::FinishListening&)
{
    m_speech->finishListening([reach = m_surroundings.reach](HeardTurn turn) {
        reach([turn = std::move(turn)](
                  LiveServerSession& session) { session.carryOut(session.m_engine.heard(turn, sessionNow())); });
    });
}

void LiveServerSession::carryOut(effect::ThinkAboutWords& words)
{
    think([words = std::move(words)](const RuleSurroundings& around) {
        return words.doubts ? HeardRules::answer(words.words, *words.doubts, words.memory, around)
                            : HeardRules::answerTyped(words.words, words.memory, around);
    });
}

void LiveServerSession::carryOut(effect::ThinkAboutResult& result)
{
    think([result = std::move(result)](const RuleSurroundings& around) {
        return RequestRules::answerResult(result.call, result.result, result.memory, around);
    });
}

void LiveServerSession::think(std::function<RuleStep(const RuleSurroundings&)> rules)
{
    RuleSurroundings around{{m_surroundings.wallClock(), m_surroundings.calendar}, m_engine.tools()};
    m_surroundings.thinking.post([reach = m_surroundings.reach, around = std::move(around), rules = std::move(rules)] {
        reach([step = rules(around)](
                  LiveServerSession& session) { session.carryOut(session.m_engine.thought(step, sessionNow())); });
    });
}

void LiveServerSession::carryOut(const effect::AskModel& ask)
{
    if (!m_modelLine)
        m_modelLine = std::make_unique<ModelLine>(m_surroundings.model->address,
            ModelLine::Reports{[this](std::string_view bytes) { carryOut(m_engine.modelSent(bytes, sessionNow())); },
                [this](ModelEnd end) { carryOut(m_engine.modelEnded(end, sessionNow())); }});
    m_modelLine->ask(std::string(ModelRequest::path), ask.body);
}

void LiveServerSession::carryOut(const effect::StopModel&)
{
    if (m_modelLine)
        m_modelLine->stop();
}

void LiveServerSession::carryOut(effect::Voice& voice)
{
    m_speech->speak(voice.reply, std::move(voice.sentences), [reach = m_surroundings.reach](VoicePiece piece) {
        reach([piece = std::move(piece)](
                  LiveServerSession& session) { session.carryOut(session.m_engine.voiced(piece, sessionNow())); });
    });
}

void LiveServerSession::carryOut(const effect::StopVoice&)
{
    m_speech->stopSpeaking();
}

void LiveServerSession::carryOut(const effect::CloseConnection& close)
{
    if (!m_isFrozen)
        m_transport->close(close.code, close.reason);
    else
        m_transport->abort();
}

void LiveServerSession::offerResumption()
{
    std::string handle = m_surroundings.ids("handle_");
    m_surroundings.resumption.put(handle, m_engine.state(), sessionNow());
    send(m_codec->resumption(handle));
    m_handles.push_back(std::move(handle));
    if (m_handles.size() <= handlesKept)
        return;
    m_surroundings.resumption.forget(m_handles.front());
    m_handles.pop_front();
}

bool LiveServerSession::isRefusedOnPurpose(const OpenAILiveClientMessage& message)
{
    const auto* create = std::get_if<openai_client::ResponseCreate>(&message);
    const Fault* fault = m_surroundings.faults.find(Fault::Kind::rejectCreate);
    if (!create || !fault || ++m_creates != fault->count)
        return false;
    OpenAIErrorReport report;
    report.code = "response_rejected";
    report.message = "No response can be started just now.";
    report.clientEventID = create->eventID;
    carryOut(effect::Tell{news::Refused{std::move(report)}});
    return true;
}

SessionNews LiveServerSession::exaggerated(SessionNews news) const
{
    constexpr std::int64_t wholeContext = 128'000; ///< Tokens.
    const Fault* fault = m_surroundings.faults.find(Fault::Kind::context);
    if (auto* usage = std::get_if<news::Usage>(&news); usage && fault) {
        usage->contextRatio = std::max(usage->contextRatio, fault->count / 100.0);
        usage->totalTokens = std::max(usage->totalTokens, wholeContext * fault->count / 100);
    }
    return news;
}

void LiveServerSession::startFaultTimers()
{
    if (const Fault* age = m_surroundings.faults.find(Fault::Kind::age))
        QTimer::singleShot(age->time, this, [this] { end("session_expired", goingAway); });
    if (const Fault* asleep = m_surroundings.faults.find(Fault::Kind::asleep))
        QTimer::singleShot(asleep->time, this, [this] { freeze(); });
    const Fault* leave = m_surroundings.faults.find(Fault::Kind::goAway);
    if (!leave)
        return;
    QTimer::singleShot(leave->time, this, [this, timeLeft = leave->timeLeft] { send(m_codec->goAway(timeLeft)); });
    QTimer::singleShot(leave->time + leave->timeLeft, this, [this] { end("going_away", goingAway); });
}

void LiveServerSession::send(std::string text)
{
    if (text.empty() || m_isFrozen)
        return;
    if (m_surroundings.faults.list.empty()) {
        m_transport->send(text);
        return;
    }
    m_wire.take(std::move(text), sessionNow());
    sendDue();
}

void LiveServerSession::sendDue()
{
    for (const WireAction& action : m_wire.due(sessionNow())) {
        if (const auto* send = std::get_if<wire_action::Send>(&action))
            m_transport->send(send->text);
        else if (const auto* close = std::get_if<wire_action::Close>(&action))
            m_transport->close(close->code, "fault");
        else if (std::holds_alternative<wire_action::FallSilent>(action))
            m_isFrozen = true;
        else
            freeze();
    }
    if (const auto next = m_wire.nextDue())
        m_wireTimer.start(std::max(*next - sessionNow(), LiveSessionEngine::Time::zero()));
}

void LiveServerSession::freeze()
{
    m_isFrozen = true;
    m_transport->freeze();
}

void LiveServerSession::wakeAtNextTick()
{
    const auto next = m_engine.nextTick();
    if (!next)
        m_tick.stop();
    else
        m_tick.start(std::max(*next - sessionNow(), LiveSessionEngine::Time::zero()));
}

} // namespace quorvell
