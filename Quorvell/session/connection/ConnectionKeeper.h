// SPDX-License-Identifier: MIT
// Keeps a conversation connected: opens its line, mends it when it is lost, and replaces it before it ends.
#pragma once

#include "Quorvell/loop/EventLog.h"
#include "Quorvell/loop/Scheduler.h"
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
/// Main thread. All that is borrowed must outlive it.
class ConnectionKeeper {
public:
    enum class Arrival {
        first, ///< A conversation begins.
        woken, ///< It goes on after a rest.
        mended, ///< The line was lost.
        rotated, ///< The line was replaced at a quiet moment.
    };

    /// A line that is ready to talk.
    struct Ready {
        Arrival arrival = Arrival::first;
        std::string sessionID;
        ConversationMemory::Mark knows = 0; ///< How much of the conversation the other side has been told.
    };

    class Owner {
    public:
        virtual ~Owner() = default;
        /// What a new line is opened with; without history where a resumption handle brings it along.
        virtual LiveSetup liveSetup(const std::optional<std::string>& resumptionHandle) = 0;
        virtual ConversationMemory::Mark settledMark() const = 0;
        virtual bool isQuiet() const = 0; ///< Neither side would notice another line.
        virtual void lineBecameReady(const Ready& ready) = 0;
        /// Of a line that is not live, what is for the event log only.
        virtual void lineReported(const LiveServerEvent& event) = 0;
        /// For a prepared line that nobody needed; in addition to what was told before.
        virtual void unusedLineBilled(double seconds) = 0;
        virtual void lineWrote(const std::string& text) = 0;
        virtual void lineReplyGrew(const std::string& delta) = 0;
        /// The first line is refused by a service that is busy; it is asked again. Told once.
        virtual void lineDelayed() = 0;
        /// It is being mended, or a line that stood by is about to take over.
        virtual void lineLost(const LiveClosure& closure) = 0;
        /// Mending failed, or is of no use; the conversation is over.
        virtual void linesGivenUp(const LiveClosure& closure) = 0;
        /// The line that `end` closed has closed.
        virtual void lineEnded(const std::string& reason) = 0;
    };

    struct Ports {
        Scheduler& scheduler;
        EventLog& log;
        std::function<std::unique_ptr<LiveConnection>(LiveConnectionObserver&)> connections;
        std::function<double()> jitter; ///< 0 to 1.
        Owner& owner;
    };

    ConnectionKeeper(Ports ports, SessionLimits limits);
    ~ConnectionKeeper();
    ConnectionKeeper(const ConnectionKeeper&) = delete;
    ConnectionKeeper& operator=(const ConnectionKeeper&) = delete;

    /// Opens a line; Arrival::first or woken.
    void open(Arrival arrival);
    /// Opens a line that the next `open` takes, ready or not. Nothing while there is one.
    void prepare();
    void dropPrepared();
    /// Closes all lines and hears nothing more of them but, if so wanted, the end of the live one. Returns whether that
    /// end is still to come. A resumption handle is kept for Arrival::woken.
    enum class Farewell { reported, silent };
    bool end(const std::string& reason, Farewell farewell);
    /// Once a second while the conversation is active: renews the line after a sleep of the computer, looks at its age,
    /// warms up the one to come, switches.
    void look();
    /// Puts a fresh line in the place of the live one, which is of no use any more. Nothing while none is ready.
    void renew(const std::string& why);
    /// The turn that began at `beganAt` is over and settled.
    void noteTurnClosed(SessionTime beganAt);

    /// The line to talk over; null while there is none that is ready.
    LiveConnection* ready() const;
    bool hasLine() const { return m_live != nullptr || m_retry.isSet(); }
    bool isReconnecting() const { return m_isReconnecting; }
    /// Tells lines apart: every one that becomes live has a number of its own.
    std::uint64_t serial() const { return m_serial; }
    const Rotation& rotation() const { return m_rotation; }
    bool hasStandby() const { return m_standby != nullptr; }
    bool hasPrepared() const { return m_prepared != nullptr; }
    /// So many that the other side holds open for talk.
    int openLines() const;
    std::size_t retiredLines() const { return m_retired.size(); }

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
    void openLive(Arrival arrival);
    void handleEvent(Line& line, const LiveServerEvent& event);
    void handleSetup(Line& line, const std::string& sessionID);
    void handleClose(Line& line, const LiveClosure& closure);
    void noteHandle(Line& line, const std::string& handle);
    void openLine(Line& line);
    void liveClosed(const LiveClosure& closure);
    void reconnect(const LiveClosure& closure, Arrival arrival);
    void renewAfterSleep(std::chrono::milliseconds slept);
    void rotateIfQuiet();
    void takePrepared(Arrival arrival);
    void preparedClosed(const LiveClosure& closure);
    void noteBill(Line& line, double seconds);
    void openStandby();
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
    std::uint64_t m_serial = 0;
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
