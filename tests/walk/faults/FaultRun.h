// SPDX-License-Identifier: MIT
// One conversation with a service that fails: three requests, and what became of each.
#pragma once

#include "FaultyService.h"
#include "Quorvell/app/talk/ReplyRecorder.h"
#include "Quorvell/connections/access/LiveAccessSource.h"
#include "Quorvell/connections/choice/LiveConnectionChoice.h"
#include "Quorvell/desktop/QtScheduler.h"
#include "Quorvell/loop/EventLog.h"
#include "Quorvell/session/SessionController.h"
#include "Quorvell/session/reports/SessionObserver.h"
#include "SleepyClock.h"

#include <array>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvell::walk {

enum class Carrier { webSocket, webRTC, gemini, responses };
const char* nameOf(Carrier carrier);

enum class Brief { no, yes }; ///< Whether a short table has it.

struct FaultRow {
    Brief brief;
    const char* name;
    std::vector<std::string> faults; ///< As the service takes them.
    std::vector<Carrier> carriers; ///< Where it can happen.
    bool isUntrusted = false; ///< The service shows a certificate for another name.
    std::chrono::milliseconds sleepsAfter{}; ///< The computer sleeps so long after the beginning; zero: never.
};

struct FaultOutcome {
    int run = 0; ///< Requests that were carried out exactly once.
    int lost = 0; ///< Neither carried out nor told.
    int twice = 0;
    std::chrono::milliseconds longestWait{}; ///< From a request's end to its being carried out.
    std::chrono::milliseconds longestMending{}; ///< From the loss of a connection to the next one.
    std::string sentence; ///< The last one shown.

    bool isRecovered() const { return run == requests; }
    static constexpr int requests = 3;
};

/// What is said in the place of typing; empty recordings mean typing.
using Recordings = std::array<std::vector<std::int16_t>, FaultOutcome::requests>;

/// How patient both sides are. The usual values are those of the program.
struct FaultPatience {
    LiveTimeLimits connection{};
    SessionLimits session{};
    std::chrono::milliseconds answer{60'000}; ///< Then the user is told that none came.
    std::chrono::milliseconds request{75'000}; ///< Then a request counts as lost unless something was told.
};

class FaultRun : public SessionObserver, public EventLog {
public:
    using Done = std::function<void(const FaultOutcome& outcome)>;

    struct Request {
        const char* words;
        const char* sign; ///< A word that is in nothing but this request.
    };
    static const std::array<Request, FaultOutcome::requests> requests;

    FaultRun(QtScheduler& scheduler, Carrier carrier, const FaultRow& row, const Recordings& recordings,
        const FaultPatience& patience, const std::string& certificate, Done done);
    ~FaultRun() override;

    void record(std::string_view name, const Json& fields) override;
    void linkChanged(Link link) override;
    void userSaid(const std::string& text, Words words) override;
    void problemArose(const std::string& sentence) override;
    void turnCompleted(TurnOutcome outcome) override;
    void conversationEnded(const SessionEnd& end) override;

private:
    void serviceReady(const std::string& address);
    void makeSession(const std::string& address);
    void registerTools();
    void carryOut(const LiveFunctionCall& call, ToolReply reply);
    void askNext();
    void sleep();
    void feedChunk();
    void settleRequest();
    void told(const std::string& sentence);
    void finish();

    QtScheduler& m_scheduler;
    SleepyClock m_clock; ///< The session's.
    Carrier m_carrier;
    const char* m_fault;
    std::chrono::milliseconds m_sleepsAfter;
    const Recordings& m_recordings;
    FaultPatience m_patience;
    Done m_done;
    FaultOutcome m_outcome;
    std::array<int, FaultOutcome::requests> m_carriedOut{};
    std::array<bool, FaultOutcome::requests> m_told{};
    int m_current = -1;
    bool m_isSettled = true; ///< The current request needs nothing more.
    SessionTime m_asked{};
    SessionTime m_lost{}; ///< When the connection was, while it is being mended.
    std::size_t m_position = 0; ///< In the current recording.
    std::int64_t m_chunks = 0;
    SessionTime m_start{};
    ReplyRecorder m_player{[] {}};
    ToolRegistry m_registry;
    std::unique_ptr<ToolDispatcher> m_tools;
    std::unique_ptr<LiveAccessSource> m_access;
    std::unique_ptr<LiveConnectionChoice> m_choice;
    std::unique_ptr<SessionController> m_session;
    std::unique_ptr<FaultyService> m_service;
    std::deque<TimerHandle> m_toolTimers;
    TimerHandle m_ticks;
    TimerHandle m_next;
    TimerHandle m_limit;
    TimerHandle m_sleep;
};

} // namespace quorvell::walk
