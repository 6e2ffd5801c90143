// SPDX-License-Identifier: MIT
// A live conversation in the OpenAI form, over a WebSocket or WebRTC.
#pragma once

#include "Quorvell/connections/life/ConnectionLife.h"
#include "Quorvell/connections/life/LiveTimeLimits.h"
#include "Quorvell/connections/life/SeenCalls.h"
#include "Quorvell/connections/life/ServiceExperience.h"
#include "Quorvell/connections/life/SilenceWatch.h"
#include "Quorvell/connections/openai/OpenAIRoute.h"
#include "Quorvell/connections/openai/OpenAITransport.h"
#include "Quorvell/preferences/LiveModelSettings.h"
#include "Quorvell/session/ports/LiveConnection.h"
#include "QuorvellCore/live/wire/openai/OpenAIBackendFlow.h"
#include "QuorvellCore/live/wire/openai/OpenAILiveEvent.h"
#include "QuorvellCore/live/wire/openai/OpenAIResponseEnds.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// Lives on the main thread. Facts are reported from the event loop, never from inside a call.
class OpenAILiveClient : public LiveConnection {
public:
    OpenAILiveClient(LiveAccessSource& accessSource, LiveModelSettings models, LiveConnectionObserver& observer,
        ServiceExperience& experience, LiveTimeLimits limits = {}, OpenAIRoute route = {});

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
    using Stage = ConnectionLife::Stage;

    // Opening
    OpenAIRoute::Way way() const { return m_route.ways[m_tried]; }
    void openTransport();
    void openAgain();
    void transportOpened();
    void transportClosed(const ConnectionFailure& failure);
    bool retryWithout(RefusedSetting setting);
    bool tryNextWay(const ConnectionFailure& failure);

    // What the service reports
    void textReceived(const std::string& text);
    void handle(OpenAILiveEvent event);
    bool applyToFlow(const OpenAILiveEvent& event);
    bool applyStart();
    bool applyEnd(const openai_event::BackendEnded& end);
    bool applyCall(const openai_event::FunctionCall& call);
    bool applyError(const openai_event::Error& error);
    void askWhetherItIsThere();
    bool answersQuestion(const openai_event::Error& error);
    void doubt();
    void wentSilent();
    SilenceWatch::Owes owes() const;
    void retryCreate(const std::optional<std::string>& clientEventID);
    void sessionRefused(const openai_event::Error& error);
    void reportIdleness();

    bool fits(const Json& message) const;
    void send(const Json& message);
    void sendAll(const std::vector<Json>& messages);

    ServiceExperience& m_experience;
    LiveTimeLimits m_limits;
    OpenAIRoute m_route;
    std::size_t m_tried = 0; ///< The way that is in use.
    OpenAILiveSetupOptions m_options;
    OpenAIBackendFlow m_flow;
    OpenAIResponseEnds m_ends;
    bool m_isBusy = false; ///< The last word to the session on the backend was not that it is idle.
    int m_refusedCreates = 0; ///< In a row.
    SeenCalls m_calls;
    SilenceWatch m_silence;
    int m_questions = 0; ///< So far, whether it is there.
    bool m_isQuestionOpen = false;
    std::optional<std::string> m_delegationID; ///< While it runs.
    std::string m_closeReason; ///< As the service stated it.
    std::unique_ptr<OpenAITransport> m_transport;
    ConnectionLife m_life; ///< Goes first.
};

} // namespace quorvell
