// SPDX-License-Identifier: MIT
// Keeps a conversation connected: opens its line, mends it when it is lost, and replaces it before it ends.
#pragma once

#include "Quorvell/loop/EventLog.h"
#include "Quorvell/loop/Scheduler.h"
#include "Quorvell/session/connection/Arrival.h"
#include "Quorvell/session/connection/ConnectionFact.h"
#include "Quorvell/session/connection/LineBriefing.h"
#include "Quorvell/session/connection/LineReport.h"
#include "Quorvell/session/connection/ReconnectBackoff.h"
#include "Quorvell/session/connection/Rotation.h"
#include "Quorvell/session/ports/LiveConnection.h"
#include "Quorvell/session/ports/LiveConnectionObserver.h"
#include "Quorvell/session/settings/SessionLimits.h"
#include "Quorvell/session/turn/ConversationMemory.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quorvell {

/// At most one line is live, at most one more stands by or is prepared; closing ones are kept until they have closed.
/// What it finds out it reports; whoever hears of it calls back later, never from inside the report.
/// Main thread. All that is borrowed must outlive it.
class ConnectionKeeper {
public:
    struct Ports {
        Scheduler& scheduler;
        EventLog& log;
        std::function<std::unique_ptr<LiveConnection>(LiveConnectionObserver&)> connections;
        std::function<double()> jitter; ///< 0 to 1.
        std::function<void(ConnectionFact)> heard; ///< To be given back to `take` once nobody is in a call of its own.
        std::function<void(LineReport)> report; ///< Never read while the keeper is being called.
    };

    ConnectionKeeper(Ports ports, SessionLimits limits);
    ~ConnectionKeeper();
    ConnectionKeeper(const ConnectionKeeper&) = delete;
    ConnectionKeeper& operator=(const ConnectionKeeper&) = delete;

    /// What a connection reported; of one that is let go nothing counts but its end. `settled` is how much of the
    /// conversation both sides have been told.
    void take(const ConnectionFact& fact, ConversationMemory::Mark settled);

    /// Opens a line; Arrival::first or woken.
    void open(Arrival arrival, const LineBriefing& briefing);
    /// Opens the line that line_report::OpeningDue was about. Nothing when another call has overtaken that.
    void openDue(const LineBriefing& briefing);
    void openStandby(const LineBriefing& briefing);
    /// Opens a line that the next `open` takes, ready or not. Nothing while there is one.
    void prepare(const LineBriefing& briefing);
    void dropPrepared();
    /// Closes all lines and hears nothing more of them but, if so wanted, the end of the live one. Returns whether that
    /// end is still to come. A resumption handle is kept for Arrival::woken.
    enum class Farewell { reported, silent };
    bool end(const std::string& reason, Farewell farewell);
    /// Once a second while the conversation is active: renews the line after a sleep of the computer, looks at its age,
    /// warms up the one to come, switches.
    enum class Moment {
        quiet, ///< Neither side would notice another line.
        busy,
    };
    void look(Moment moment);
    /// Puts a fresh line in the place of the live one, which is of no use any more. Nothing while none is ready.
    void renew(const std::string& why);
    /// The turn that began at `beganAt` is over; `settled` as in `take`.
    void noteTurnClosed(SessionTime beganAt, ConversationMemory::Mark settled);

    /// The line to talk over; null while there is none that is ready.
    LiveConnection* ready() const;
    bool isReconnecting() const { return m_isReconnecting; }
    /// Tells lines apart: every one that becomes live has a number of its own.
    std::uint64_t serial() const { return m_serial; }
    bool hasPrepared() const { return m_prepared != nullptr; }
    /// So many that the other side holds open for talk.
    int openLines() const;

private:
    class Line;

    /// What the service needs to go on where it was.
    struct Resumption {
        std::optional<std::string> resumptionHandle;
        SessionTime at{};
        ConversationMemory::Mark knows = 0;
    };

    static constexpr std::chrono::milliseconds standbyRetry{10'000}; ///< Between two attempts to warm one up.

    std::unique_ptr<Line> makeConnection(Arrival arrival);
    Line* lineOf(std::uint64_t id);
    void openLive(Arrival arrival, const LineBriefing& briefing);
    void openLine(Line& line, const LineBriefing& briefing);
    void handleEvent(Line& line, const LiveServerEvent& event, ConversationMemory::Mark settled);
    void handleSetup(Line& line, const std::string& sessionID);
    void handleClose(Line& line, const LiveClosure& closure);
    void noteHandle(Line& line, const std::string& handle, ConversationMemory::Mark settled);
    void liveClosed(const LiveClosure& closure);
    void reconnect(const LiveClosure& closure, Arrival arrival);
    void askForOpening(Arrival arrival);
    void renewAfterSleep(std::chrono::milliseconds slept);
    void rotateIfQuiet(Moment moment);
    void takePrepared(Arrival arrival);
    void preparedClosed(const LiveClosure& closure);
    void noteBill(Line& line, double seconds);
    void standbyClosed(const LiveClosure& closure);
    void switchToStandby(Arrival arrival);
    void becomeReady(Line& line, Arrival arrival);
    void retire(std::unique_ptr<Line> line, std::string reason, Farewell farewell);
    void takeAwayClosedLines();

    Ports m_ports;
    SessionLimits m_limits;
    std::unique_ptr<Line> m_live;
    std::unique_ptr<Line> m_standby;
    std::unique_ptr<Line> m_prepared;
    std::vector<std::unique_ptr<Line>> m_retired;
    std::uint64_t m_made = 0; ///< Lines, ever.
    std::uint64_t m_serial = 0;
    std::optional<Arrival> m_due; ///< Of the line that is to be opened.
    Resumption m_resumption; ///< Of the line that is live, or was last.
    ReconnectBackoff m_reconnect;
    bool m_isReconnecting = false;
    Rotation m_rotation;
    SessionTime m_standbyNotBefore{};
    SessionTime m_lastLook{};
    TimerHandle m_retry;
    TimerHandle m_cleanUp;
};

} // namespace quorvell
