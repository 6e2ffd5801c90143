// SPDX-License-Identifier: MIT
// A live conversation with a Gemini service, over a WebSocket.
#pragma once

#include "Media/audio/Resampler.h"
#include "Quorvell/connections/life/ConnectionLife.h"
#include "Quorvell/connections/life/LiveTimeLimits.h"
#include "Quorvell/connections/life/SeenCalls.h"
#include "Quorvell/connections/life/ServiceExperience.h"
#include "Quorvell/connections/web/LiveSocket.h"
#include "Quorvell/preferences/LiveModelSettings.h"
#include "Quorvell/session/ports/LiveConnection.h"
#include "QuorvellCore/live/wire/gemini/LiveSetupOptions.h"

#include <deque>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace quorvell {

/// Lives on the main thread. Facts are reported from the event loop, never from inside a call. A message to this
/// service would break off what the model is saying, so messages wait until it has finished.
class LiveClient : public LiveConnection {
public:
    LiveClient(LiveAccessSource& accessSource, LiveModelSettings models, LiveConnectionObserver& observer,
        ServiceExperience& experience, LiveTimeLimits limits = {});

    void open(const LiveSetup& setup) override;
    void sendAudio(std::span<const std::uint8_t> pcm) override;
    void sendAudioPause() override;
    void sendMessage(const LiveMessageText& message) override;
    void requestAnswer() override;
    void sendVoiceInstructions(const std::string& text) override;
    void sendToolResponse(const LiveFunctionResponse& response, LiveResponseScheduling scheduling) override;
    void dropStale() override;
    void close() override;

    static constexpr std::size_t mostWaiting = 256; ///< Messages; beyond that the oldest is forgotten.

private:
    using Stage = ConnectionLife::Stage;

    void openSocket();
    void socketOpened();
    void socketClosed(const ConnectionFailure& failure);
    void textReceived(const std::string& text);
    void handle(LiveServerEvent event);
    void setUp();
    bool keepNewCalls(std::vector<LiveFunctionCall>& calls);
    void modelIsAnswering();
    void soundWasLeftUnanswered();
    void turnEnded();
    void sendWaiting();
    void reportIdleness();
    bool isFree() const { return !m_isAnswering && m_owed.empty(); }
    void sendSound(const std::vector<std::int16_t>& samples);
    void send(const Json& message);

    ServiceExperience& m_experience;
    LiveTimeLimits m_limits;
    LiveSetupOptions m_options;
    std::vector<LiveHistoryEntry> m_history;
    std::deque<LiveMessageText> m_waiting;
    bool m_isAnswerWanted = false; ///< Of what was told so far, once the model is free.
    bool m_hasReacted = true; ///< The service has said anything since it was last asked.
    bool m_isAnswering = false; ///< Between a request, or the model's first word, and the end of its turn.
    bool m_isBusy = false; ///< The last word to the session was not that nothing runs.
    std::set<std::string, std::less<>> m_owed; ///< Calls whose result the model waits for.
    SeenCalls m_calls;
    Resampler m_resampler;
    std::unique_ptr<LiveSocket> m_socket;
    ConnectionLife m_life; ///< Goes first.
};

} // namespace quorvell
