// SPDX-License-Identifier: MIT
// One client: carries its messages to the engine and the engine's effects out.
#pragma once

#include "LiveService/conversation/LiveSessionEngine.h"
#include "LiveService/conversation/ResumptionStore.h"
#include "LiveService/faults/FaultyWire.h"
#include "LiveService/model/ModelLine.h"
#include "LiveService/protocols/SessionCodec.h"
#include "LiveService/server/SessionTransport.h"
#include "LiveService/speech/SpeechWorker.h"
#include "LiveService/speech/WorkerThread.h"
#include "Understanding/dialogue/RuleSurroundings.h"

#include <QObject>
#include <QTimer>

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace quorvell {

/// Lives on the main thread; what takes time is done by the workers, whose answers come back through `reach`.
class LiveServerSession : public QObject {
public:
    /// Runs the function on the main thread with this session, if it is still there. Callable from any thread.
    using Reach = std::function<void(std::function<void(LiveServerSession&)>)>;

    struct Surroundings {
        IdSource ids;
        Calendar calendar;
        std::function<Instant()> wallClock;
        WorkerThread& thinking; ///< Runs the rules and reads large messages, for all sessions.
        ResumptionStore& resumption; ///< For all sessions.
        SessionFaults faults;
        std::optional<ModelAccess> model; ///< The user's own, for what the rules do not understand.
        std::function<std::unique_ptr<SpeechWorker>()> takeSpeech;
        Reach reach;
        std::function<void()> ended; ///< The connection is gone. The session must outlive the call.
    };

    static constexpr std::size_t largeMessage = 128 * 1024; ///< From here on read off the main thread.
    static constexpr std::size_t longestUnread = 64 * 1024 * 1024; ///< Bytes behind a message that is being read.
    static constexpr int goingAway = 1001; ///< Close code of a server that leaves, in RFC 6455.

    LiveServerSession(
        std::unique_ptr<SessionTransport> transport, std::shared_ptr<SessionCodec> codec, Surroundings surroundings);

    /// A message that came another way than over the transport, such as with the request that opened the session.
    void take(const OpenAILiveClientMessage& message);
    void end(std::string_view reason, int closeCode);
    const std::string& id() const { return m_engine.sessionID(); }
    /// Null when the session never started.
    std::unique_ptr<SpeechWorker> releaseSpeech();

private:
    void takeText(std::string text);
    void read(std::string text);
    void readWaiting();
    void takeIncoming(const SessionCodec::Incoming& incoming);
    void resume(const std::string& handle);
    void carryOut(EngineEffects effects);
    void carryOut(const effect::Tell& tell);
    void carryOut(const effect::PrepareSpeech& prepare);
    void carryOut(const effect::ExpectSpeech& expect);
    void carryOut(const effect::BeginListening& begin);
    void carryOut(effect::Listen& listen);
    void carryOut(effect::JudgePause& judge);
    void carryOut(const effect::FinishListening& finish);
    void carryOut(effect::ThinkAboutWords& think);
    void carryOut(effect::ThinkAboutResult& think);
    void carryOut(const effect::AskModel& ask);
    void carryOut(const effect::StopModel& stop);
    void carryOut(effect::Voice& voice);
    void carryOut(const effect::StopVoice& stop);
    void carryOut(const effect::CloseConnection& close);
    void think(std::function<RuleStep(const RuleSurroundings&)> rules);
    void offerResumption();
    bool isRefusedOnPurpose(const OpenAILiveClientMessage& message);
    SessionNews exaggerated(SessionNews news) const;
    void startFaultTimers();
    void send(std::string text);
    void sendDue();
    void freeze();
    void wakeAtNextTick();
    std::string nowInWords() const;

    std::unique_ptr<SessionTransport> m_transport;
    std::shared_ptr<SessionCodec> m_codec; ///< Shared with the worker that reads a large message.
    Surroundings m_surroundings;
    LiveSessionEngine m_engine;
    FaultyWire m_wire;
    std::unique_ptr<SpeechWorker> m_speech; ///< From the session's start on.
    std::deque<std::string> m_unread; ///< Messages behind a large one that is being read.
    std::size_t m_unreadBytes = 0;
    bool m_isReading = false;
    bool m_isFrozen = false; ///< Neither heard nor answered any more; a fault that is made on purpose.
    bool m_offersHandles = false;
    std::deque<std::string> m_handles; ///< The last two that were offered.
    int m_creates = 0;
    QTimer m_tick;
    QTimer m_wireTimer;
    std::unique_ptr<ModelLine> m_modelLine; ///< From the first question to the model on.
};

} // namespace quorvell
