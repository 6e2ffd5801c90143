#pragma once

#include "LiveService/conversation/LiveSessionEngine.h"
#include "LiveService/rules/RuleSurroundings.h"
#include "LiveService/speech/SpeechWorker.h"
#include "LiveService/speech/WorkerThread.h"

#include <QObject>
#include <QTimer>
#include <QWebSocket>

#include <deque>
#include <functional>
#include <memory>
#include <string>

namespace quorvell {

/// One client on the wire: carries frames to the engine and the engine's effects out. Lives on the main thread; what
/// takes time is done by the workers, whose answers come back through `reach`.
class LiveServerSession : public QObject {
public:
    /// Runs the function on the main thread with this session, if it is still there. Callable from any thread.
    using Reach = std::function<void(std::function<void(LiveServerSession&)>)>;

    struct Surroundings {
        IdSource ids;
        Calendar calendar;
        std::function<Instant()> wallClock;
        WorkerThread& thinking; ///< Runs the rules and reads large messages, for all sessions.
        std::function<std::unique_ptr<SpeechWorker>()> takeSpeech;
        Reach reach;
        std::function<void()> ended; ///< The connection is gone. The session must outlive the call.
    };

    static constexpr qint64 longestMessage = 16 * 1024 * 1024; ///< A longer one closes the connection with 1009.
    static constexpr qint64 longestUnsent = 4 * 1024 * 1024; ///< A client that reads no faster is let go.
    static constexpr qsizetype largeMessage = 128 * 1024; ///< From here on read off the main thread.
    static constexpr qsizetype longestUnread = 64 * 1024 * 1024; ///< Letters behind a large message that is being read.
    static constexpr std::chrono::milliseconds pingPeriod{20'000};
    static constexpr std::chrono::milliseconds closePatience{2'000};

    /// Takes the socket over.
    LiveServerSession(std::unique_ptr<QWebSocket> socket, Surroundings surroundings);
    ~LiveServerSession() override;

    void shutDown();
    /// Null when the session never started.
    std::unique_ptr<SpeechWorker> releaseSpeech();

private:
    void takeFrame(const QString& frame);
    void readFrame(const QString& frame);
    void readWaiting();
    void takeMessage(const OpenAILiveClientMessage& message);
    void carryOut(EngineEffects effects);
    void carryOut(const effect::SendText& send);
    void carryOut(const effect::PrepareSpeech& prepare);
    void carryOut(const effect::BeginListening& begin);
    void carryOut(effect::Listen& listen);
    void carryOut(const effect::FinishListening& finish);
    void carryOut(effect::ThinkAboutWords& think);
    void carryOut(effect::ThinkAboutResult& think);
    void carryOut(effect::Voice& voice);
    void carryOut(const effect::StopVoice& stop);
    void carryOut(const effect::CloseConnection& close);
    void think(std::function<RuleStep(const RuleSurroundings&)> rules);
    void wakeAtNextTick();
    void ping();

    std::unique_ptr<QWebSocket> m_socket;
    Surroundings m_surroundings;
    LiveSessionEngine m_engine;
    std::unique_ptr<SpeechWorker> m_speech; ///< From the session's start on.
    std::deque<QString> m_unread; ///< Frames behind a large one that is being read.
    qsizetype m_unreadLetters = 0;
    bool m_isReading = false;
    bool m_awaitsPong = false;
    QTimer m_tick;
    QTimer m_ping;
};

} // namespace quorvell
