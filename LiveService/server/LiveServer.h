// The live service: one server, any number of sessions up to a limit.
#pragma once

#include "LiveService/conversation/IdSource.h"
#include "LiveService/server/LiveServerSession.h"
#include "LiveService/server/UpgradeGate.h"
#include "LiveService/speech/SpeechWorkerPool.h"
#include "LiveService/speech/WorkerThread.h"

#include <QHostAddress>
#include <QObject>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace quorvell {

/// Lives on the main thread and needs its event loop.
class LiveServer : public QObject {
public:
    struct Settings {
        std::string token; ///< The key that clients must show; never empty.
        Calendar calendar;
        std::function<Instant()> wallClock;
        IdSource ids;
        SpeechWorker::MakePort makeSpeech;
        std::size_t mostSessions = 8;
    };

    explicit LiveServer(Settings settings);
    ~LiveServer() override;

    /// Port 0 takes any that is free. False when the address cannot be had; problem() says why.
    bool listen(const QHostAddress& host, std::uint16_t port) { return m_gate.listen(host, port); }
    std::uint16_t port() const { return m_gate.port(); }
    QString problem() const { return m_gate.problem(); }

    std::size_t sessionCount() const { return m_sessions.size(); }
    /// Takes no more clients and tells those that are there; `stopped` is called when all are gone.
    void stop(std::function<void()> stopped);

private:
    void openSession(std::unique_ptr<QWebSocket> socket);
    void later(std::function<void()> action);
    void endSession(int number);
    void reportIfStopped();

    Settings m_settings;
    WorkerThread m_thinking;
    SpeechWorkerPool m_speech;
    UpgradeGate m_gate;
    std::map<int, std::unique_ptr<LiveServerSession>> m_sessions;
    int m_lastNumber = 0;
    std::function<void()> m_stopped; ///< Set while stopping.
};

} // namespace quorvell
