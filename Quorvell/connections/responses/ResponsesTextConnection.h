// SPDX-License-Identifier: MIT
// A typed conversation over the Responses service: every question carries the conversation so far.
#pragma once

#include "Quorvell/connections/life/ConnectionLife.h"
#include "Quorvell/connections/life/LiveTimeLimits.h"
#include "Quorvell/connections/life/SeenCalls.h"
#include "Quorvell/connections/life/ServiceExperience.h"
#include "Quorvell/connections/responses/ConversationItems.h"
#include "Quorvell/connections/responses/ResponsesClient.h"
#include "Quorvell/preferences/LiveModelSettings.h"
#include "Quorvell/session/ports/LiveConnection.h"

#include <deque>
#include <set>
#include <string>

namespace quorvell {

/// Lives on the main thread. Facts are reported from the event loop, never from inside a call. One question runs at a
/// time; what comes meanwhile waits. Sound is not carried.
class ResponsesTextConnection : public LiveConnection {
public:
    ResponsesTextConnection(LiveAccessSource& accessSource, LiveModelSettings models, LiveConnectionObserver& observer,
        ServiceExperience& experience, LiveTimeLimits limits = {});

    void open(const LiveSetup& setup) override;
    void sendAudio(std::span<const std::uint8_t>) override { }
    void sendAudioPause() override { }
    void sendMessage(const LiveMessageText& message) override;
    void requestAnswer() override;
    void sendVoiceInstructions(const std::string& text) override;
    void sendToolResponse(const LiveFunctionResponse& response, LiveResponseScheduling scheduling) override;
    void dropStale() override;
    void close() override;

    static constexpr std::size_t mostWaiting = 256; ///< Messages; beyond that the oldest is forgotten.
    static constexpr int mostRetries = 3; ///< Of one question, while nothing of its answer has come.

private:
    using Stage = ConnectionLife::Stage;

    void proceed();
    void ask();
    void streamed(ResponsesStreamEvent event);
    void reported(LiveServerEvent event);
    void called(LiveFunctionCall& call);
    void written(const std::string& text);
    void ended(const responses_event::Ended& end);
    void failed(const ConnectionFailure& failure);
    bool retry(const ConnectionFailure& failure);
    bool retryWithoutSetting(const ConnectionFailure& failure);
    void giveUpAnswer(const std::string& code, const std::string& sentence);
    void settle();

    ServiceExperience& m_experience;
    LiveTimeLimits m_limits;
    ResponsesRequest m_request; ///< All but its input.
    ConversationItems m_items;
    std::deque<LiveMessageText> m_waiting;
    std::set<std::string, std::less<>> m_owed; ///< Calls whose result the model waits for.
    SeenCalls m_calls;
    bool m_isAnswerWanted = false;
    bool m_isAsking = false;
    bool m_isBusy = false; ///< The last word to the session was not that nothing runs.
    bool m_hasAnswerBegun = false; ///< Something of the running answer was reported.
    bool m_hasCalled = false; ///< The running answer has called a tool.
    int m_retries = 0;
    std::string m_unfinished; ///< Text of the running answer, as far as it has come.
    QNetworkAccessManager m_web; ///< Its own: after a sleep of the computer the lines of older ones are dead.
    ResponsesClient m_client;
    ConnectionLife m_life; ///< Goes first.
};

} // namespace quorvell
