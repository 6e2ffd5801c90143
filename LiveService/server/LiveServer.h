// SPDX-License-Identifier: MIT
// The live service: one server, any number of sessions up to a limit.
#pragma once

#include "LiveService/conversation/IdSource.h"
#include "LiveService/conversation/ResumptionStore.h"
#include "LiveService/faults/Fault.h"
#include "LiveService/server/LiveServerSession.h"
#include "LiveService/server/ServiceDoor.h"
#include "LiveService/speech/SpeechWorkerPool.h"
#include "LiveService/speech/WorkerThread.h"
#include "Media/webrtc/WebRTCPeerOptions.h"

#include <QHostAddress>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quorvell {

/// Lives on the main thread and needs its event loop.
class LiveServer : public QObject {
public:
    static constexpr std::size_t usualSessions = 8;
    static constexpr int mostResponding = 8; ///< Typed turns that are being thought about; each may have 16 MiB.
    static constexpr std::chrono::minutes idlePatience{10}; ///< Without a session; then the models are let go.

    struct Settings {
        std::string token; ///< The key that clients must show; never empty.
        Calendar calendar;
        std::function<Instant()> wallClock;
        IdSource ids;
        SpeechWorker::MakePort makeSpeech;
        std::size_t mostSessions = usualSessions;
        std::vector<Fault> faults{};
        std::optional<QSslConfiguration> tls{}; ///< With a certificate and its key; without, nothing is encrypted.
        SpeechWorkerPool::Readiness readiness = SpeechWorkerPool::Readiness::whenSpeechComes;
        std::optional<ModelAccess> model{}; ///< The user's own, for what the rules do not understand.
    };

    explicit LiveServer(Settings settings);
    ~LiveServer() override;

    /// Port 0 takes any that is free. False when the address cannot be had; problem() says why.
    bool listen(const QHostAddress& host, std::uint16_t port);
    /// Instead: the connections that an assistant hands over with a line, a socket that stays the caller's. `ended` is
    /// called when the assistant is gone.
    void serveLine(int descriptor, std::function<void()> ended) { m_door.serveLine(descriptor, std::move(ended)); }
    std::uint16_t port() const { return m_door.port(); }
    QString problem() const { return m_door.problem(); }

    std::size_t sessionCount() const { return m_sessions.size(); }
    /// Takes no more clients and tells those that are there; `stopped` is called when all are gone.
    void stop(std::function<void()> stopped);

private:
    using Guest = ServiceDoor::Guest;

    std::optional<HttpResponse> refusalFor(Guest guest) const;
    void openWebSocket(Guest guest, std::unique_ptr<QTcpSocket> socket);
    void takePosted(Guest guest, std::string body, const HttpAnswer& answer);
    void openCall(Guest guest, const std::string& body, const HttpAnswer& answer);
    void respond(Guest guest, std::string body, const HttpAnswer& answer);
    LiveServerSession& openSession(
        int number, std::unique_ptr<SessionTransport> transport, std::shared_ptr<SessionCodec> codec);
    void endSession(int number);
    void reportIfStopped();
    void later(std::function<void()> action);

    Settings m_settings;
    WorkerThread m_thinking;
    SpeechWorkerPool m_speech;
    ResumptionStore m_resumption;
    QTimer m_idle;
    ServiceDoor m_door;
    WebRTCPeerOptions::Reach m_reach = WebRTCPeerOptions::Reach::thisComputer; ///< Of calls.
    std::map<int, std::unique_ptr<LiveServerSession>> m_sessions;
    int m_responding = 0;
    std::function<void()> m_stopped; ///< Set while stopping.
};

} // namespace quorvell
