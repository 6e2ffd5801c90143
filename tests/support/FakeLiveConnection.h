// SPDX-License-Identifier: MIT
// Writes down what the session sends and reports what a test makes up.
#pragma once

#include "Quorvell/session/ports/LiveConnection.h"
#include "Quorvell/session/ports/LiveConnectionObserver.h"

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace quorvell {

class FakeLiveConnection : public LiveConnection {
public:
    explicit FakeLiveConnection(LiveConnectionObserver& observer)
        : m_observer(observer)
    {
    }

    void open(const LiveSetup& wanted) override
    {
        setup = wanted;
        std::string line = wanted.resumptionHandle ? "open with " + *wanted.resumptionHandle : "open";
        for (const Json& tool : wanted.tools)
            line += " " + readString(tool, "name").value_or("?");
        sent.push_back(line);
    }
    void sendAudio(std::span<const std::uint8_t> pcm) override
    {
        ++audioChunks;
        audioBytes += static_cast<int>(pcm.size());
    }
    void sendAudioPause() override { sent.push_back("pause"); }
    void sendMessage(const LiveMessageText& message) override { sent.push_back("message " + message.text); }
    void requestAnswer() override { sent.push_back("answer"); }
    void sendVoiceInstructions(const std::string& text) override { sent.push_back("voice " + text); }
    void sendToolResponse(const LiveFunctionResponse& response, LiveResponseScheduling wanted) override
    {
        scheduling = wanted;
        sent.push_back("tool " + response.id + " " + dumpJson(response.response));
    }
    void dropStale() override { sent.push_back("drop stale"); }
    void close() override { sent.push_back("close"); }

    void report(const LiveServerEvent& event) { m_observer.liveEventReceived(event); }
    void reportText(const std::string& text) { m_observer.liveReplyWritten(text); }
    void closeWith(const LiveClosure& closure) { m_observer.liveConnectionClosed(closure); }

    LiveSetup setup;
    std::vector<std::string> sent;
    LiveResponseScheduling scheduling = LiveResponseScheduling::whenIdle; ///< Of the last tool response.
    int audioChunks = 0;
    int audioBytes = 0;

private:
    LiveConnectionObserver& m_observer;
};

} // namespace quorvell
