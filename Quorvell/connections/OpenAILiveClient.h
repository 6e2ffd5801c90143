// A live conversation over a WebSocket.
#pragma once

#include "Quorvell/connections/ConnectionFailure.h"
#include "Quorvell/connections/LiveAccessSource.h"
#include "Quorvell/connections/LiveModelSettings.h"
#include "Quorvell/connections/LiveSocket.h"
#include "Quorvell/connections/LiveTimeLimits.h"
#include "Quorvell/session/LiveConnection.h"
#include "Quorvell/session/LiveConnectionObserver.h"
#include "QuorvellCore/live/wire/OpenAIBackendFlow.h"
#include "QuorvellCore/live/wire/OpenAILiveEvent.h"
#include "QuorvellCore/live/wire/OpenAILiveSetupOptions.h"
#include "QuorvellCore/live/wire/OpenAIResponseEnds.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// Lives on the main thread. Facts are reported from the event loop, never from inside a call.
class OpenAILiveClient : public LiveConnection {
public:
    OpenAILiveClient(LiveAccessSource& accessSource, LiveModelSettings models, LiveConnectionObserver& observer,
        LiveTimeLimits limits = {});

    void open(const LiveSetup& setup) override;
    void sendAudio(std::span<const std::uint8_t> pcm) override;
    void sendAudioPause() override;
    void sendMessage(const LiveMessageText& message) override;
    void requestAnswer() override;
    void sendVoiceInstructions(const std::string& text) override;
    void sendToolResponse(const LiveFunctionResponse& response, LiveResponseScheduling scheduling) override;
    void dropStale() override;
    void close() override;

private:
    enum class Stage { unopened, locating, opening, starting, started, closing, closed };

    // Opening
    void useAccess(const LiveAccessSource::Found& found);
    void openSocket();
    bool retryWithout(RefusedSetting setting);
    void socketOpened();
    void socketClosed(const ConnectionFailure& failure);

    // What the service reports
    void textReceived(const std::string& text);
    void handle(OpenAILiveEvent event);
    bool applyToFlow(const OpenAILiveEvent& event);
    bool applyEnd(const openai_event::BackendEnded& end);
    bool applyCall(const openai_event::FunctionCall& call);
    bool applyError(const openai_event::Error& error);
    void retryCreate(const std::optional<std::string>& clientEventID);
    void sessionRefused(const openai_event::Error& error);
    void reportIdleness();

    void report(const LiveServerEvent& event);
    void send(const Json& message);
    void sendAll(const std::vector<Json>& messages);
    void startDeadline(std::chrono::milliseconds limit, void (OpenAILiveClient::*action)());
    void startedTooSlowly();
    void closedTooSlowly();
    void fail(const ConnectionFailure& failure);
    void finish(const LiveClosure& closure);

    LiveAccessSource& m_accessSource;
    LiveConnectionObserver& m_observer;
    LiveTimeLimits m_limits;
    Stage m_stage = Stage::unopened;
    LiveAccess m_access;
    OpenAILiveSetupOptions m_options;
    OpenAIBackendFlow m_flow;
    OpenAIResponseEnds m_ends;
    bool m_isBusy = false; ///< The last word to the session on the backend was not that it is idle.
    int m_refusedCreates = 0; ///< In a row.
    std::deque<std::string> m_calls; ///< Newest last; a call that is reported twice runs once.
    std::optional<std::string> m_delegationID; ///< While it runs.
    std::string m_closeReason; ///< As the service stated it.
    std::unique_ptr<LiveSocket> m_socket;
    std::unique_ptr<QTimer> m_deadline; ///< Of starting and closing.
    QObject m_context; ///< Receives what comes later; goes first.
};

} // namespace quorvell
