// SPDX-License-Identifier: MIT
// Writes down what the session sends and reports what a test makes up.
#pragma once

#include "Quorvell/session/ports/LiveConnection.h"
#include "Quorvell/session/ports/LiveConnectionObserver.h"

#include <nlohmann/json.hpp>

#include <functional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace quorvell {

class FakeLiveConnection : public LiveConnection {
public:
    explicit FakeLiveConnection(LiveConnectionObserver& observer)
        : m_observer(observer)
    {
        living.insert(this);
    }
    ~FakeLiveConnection() override { living.erase(this); }

    void open(const LiveSetup& wanted) override
    {
        setup = wanted;
        std::string line = wanted.resumptionHandle ? "open with " + *wanted.resumptionHandle : "open";
        for (const Json& tool : wanted.tools)
            line += " " + readString(tool, "name").value_or("?");
        note(line);
    }
    void sendAudio(std::span<const std::uint8_t> pcm) override
    {
        ++audioChunks;
        audioBytes += static_cast<int>(pcm.size());
        if (during)
            during("audio");
    }
    void sendAudioPause() override { note("pause"); }
    void sendMessage(const LiveMessageText& message) override { note("message " + message.text); }
    void requestAnswer() override { note("answer"); }
    void sendVoiceInstructions(const std::string& text) override { note("voice " + text); }
    void sendToolResponse(const LiveFunctionResponse& response, LiveResponseScheduling wanted) override
    {
        scheduling = wanted;
        note("tool " + response.id + " " + dumpJson(response.response));
    }
    void dropStale() override { note("drop stale"); }
    void close() override { note("close"); }

    void report(const LiveServerEvent& event) { m_observer.liveEventReceived(event); }
    void reportText(const std::string& text) { m_observer.liveReplyWritten(text); }
    void closeWith(const LiveClosure& closure) { m_observer.liveConnectionClosed(closure); }

    std::function<void(const std::string& call)> during; ///< Runs inside each call but `open`, with what is in `sent`.
    static inline std::set<const FakeLiveConnection*> living; ///< Those that nobody has let go yet.
    LiveSetup setup;
    std::vector<std::string> sent;
    LiveResponseScheduling scheduling = LiveResponseScheduling::whenIdle; ///< Of the last tool response.
    int audioChunks = 0;
    int audioBytes = 0;

private:
    void note(const std::string& line)
    {
        sent.push_back(line);
        if (during && !line.starts_with("open"))
            during(line);
    }

    LiveConnectionObserver& m_observer;
};

/// The connection that a test talks to. One that was never made or is gone fails the test, and not the program.
class FakeLine {
public:
    FakeLine(FakeLiveConnection* line = nullptr)
        : m_line(line)
    {
    }
    FakeLiveConnection& operator*() const
    {
        if (!isThere())
            throw std::logic_error("there is no such connection");
        return *m_line;
    }
    FakeLiveConnection* operator->() const { return &**this; }
    bool isThere() const { return FakeLiveConnection::living.contains(m_line); }

private:
    FakeLiveConnection* m_line;
};

} // namespace quorvell
