// SPDX-License-Identifier: MIT
#include "Quorvell/session/connection/ConnectionKeeper.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <utility>

namespace quorvell {

/// One connection and what is known of it. Outlives its use until it has closed.
class ConnectionKeeper::Line : public LiveConnectionObserver {
public:
    Line(ConnectionKeeper& keeper, Arrival why)
        : arrival(why)
        , m_keeper(keeper)
    {
    }

    void liveEventReceived(const LiveServerEvent& event) override { m_keeper.handleEvent(*this, event); }
    void liveReplyWritten(const std::string& text) override
    {
        if (m_keeper.m_live.get() == this)
            m_keeper.m_ports.owner.lineWrote(text);
    }
    void liveReplyGrew(const std::string& delta) override
    {
        if (m_keeper.m_live.get() == this)
            m_keeper.m_ports.owner.lineReplyGrew(delta);
    }
    void liveConnectionClosed(const LiveClosure& closure) override
    {
        if (!std::exchange(isClosed, true))
            m_keeper.handleClose(*this, closure);
    }

    Arrival arrival;
    bool isReady = false;
    bool isClosed = false;
    std::string sessionID;
    SessionTime connectionStart{};
    ConversationMemory::Mark knows = 0;
    bool isResumed = false; ///< Opened with a resumption handle.
    Resumption resumption; ///< The newest handle that came over this line.
    double billedSeconds = 0; ///< As reported before it was live.
    bool isUnused = false; ///< Prepared, and not needed.
    std::string endReason; ///< Why it was taken out of use.
    Farewell farewell = Farewell::silent;
    std::unique_ptr<LiveConnection> connection;

private:
    ConnectionKeeper& m_keeper;
};

ConnectionKeeper::ConnectionKeeper(Ports ports, SessionLimits limits)
    : m_ports(std::move(ports))
    , m_limits(limits)
{
}

ConnectionKeeper::~ConnectionKeeper() = default;

LiveConnection* ConnectionKeeper::ready() const
{
    return m_live && m_live->isReady ? m_live->connection.get() : nullptr;
}

// ---- Opening

void ConnectionKeeper::open(Arrival arrival)
{
    if (arrival == Arrival::first)
        m_resumption = {};
    m_reconnect = {};
    m_isReconnecting = false;
    if (m_prepared)
        takePrepared(arrival);
    else
        openLive(arrival);
}

void ConnectionKeeper::openLive(Arrival arrival)
{
    m_retry.cancel();
    m_rotation = {};
    if (m_live)
        retire(std::move(m_live), "lost", Farewell::silent);
    m_live = makeConnection(arrival);
    ++m_serial;
    openLine(*m_live);
}

void ConnectionKeeper::openLine(Line& line)
{
    const auto& handle = m_resumption.resumptionHandle;
    line.isResumed = handle.has_value();
    line.knows = handle ? m_resumption.knows : m_ports.owner.settledMark();
    line.connection->open(m_ports.owner.liveSetup(handle));
}

std::unique_ptr<ConnectionKeeper::Line> ConnectionKeeper::makeConnection(Arrival arrival)
{
    auto line = std::make_unique<Line>(*this, arrival);
    line->connection = m_ports.connections(*line);
    return line;
}

// ---- A line that is opened in advance

void ConnectionKeeper::prepare()
{
    if (m_live || m_prepared)
        return;
    m_prepared = makeConnection(Arrival::woken);
    openLine(*m_prepared);
}

void ConnectionKeeper::takePrepared(Arrival arrival)
{
    m_retry.cancel();
    m_rotation = {};
    m_live = std::move(m_prepared);
    m_live->arrival = arrival;
    ++m_serial;
    if (m_live->resumption.resumptionHandle)
        m_resumption = m_live->resumption;
    if (m_live->isReady)
        becomeReady(*m_live, arrival);
}

void ConnectionKeeper::dropPrepared()
{
    if (!m_prepared)
        return;
    if (m_prepared->resumption.resumptionHandle) // The one that it was opened with may hold only once.
        m_resumption = m_prepared->resumption;
    m_prepared->isUnused = true;
    if (m_prepared->billedSeconds > 0)
        m_ports.owner.unusedLineBilled(m_prepared->billedSeconds);
    retire(std::move(m_prepared), "not needed", Farewell::silent);
}

void ConnectionKeeper::preparedClosed(const LiveClosure& closure)
{
    m_ports.log.record("prepared_lost", {{"code", closure.code}, {"reason", closure.reason}});
    if (!m_prepared->isReady && m_prepared->isResumed)
        m_resumption = {};
    dropPrepared();
}

void ConnectionKeeper::noteBill(Line& line, double seconds)
{
    if (line.isUnused && seconds > line.billedSeconds)
        m_ports.owner.unusedLineBilled(seconds - line.billedSeconds);
    line.billedSeconds = seconds;
}

int ConnectionKeeper::openLines() const
{
    return (ready() ? 1 : 0) + (m_prepared && m_prepared->isReady ? 1 : 0);
}

// ---- What lines report

void ConnectionKeeper::handleEvent(Line& line, const LiveServerEvent& event)
{
    if (const auto* setup = std::get_if<live_event::SetupComplete>(&event))
        return handleSetup(line, setup->sessionID);
    if (const auto* handle = std::get_if<live_event::ResumptionHandle>(&event))
        return noteHandle(line, handle->handle);
    const bool isForLog = std::holds_alternative<live_event::Diagnostic>(event);
    if (const auto* bill = std::get_if<live_event::BilledSeconds>(&event); bill && m_live.get() != &line)
        return noteBill(line, bill->seconds);
    if (!isForLog && (m_live.get() != &line || !line.isReady))
        return;
    const SessionTime now = m_ports.scheduler.now();
    if (std::holds_alternative<live_event::GoAway>(event))
        m_rotation.want("go_away", now);
    if (const auto* usage = std::get_if<live_event::ContextUsage>(&event))
        m_rotation.noteContext(usage->ratio, now, m_limits);
    m_ports.owner.lineReported(event);
}

void ConnectionKeeper::handleSetup(Line& line, const std::string& sessionID)
{
    const bool isInUse = m_live.get() == &line || m_standby.get() == &line || m_prepared.get() == &line;
    if (!isInUse || line.isReady)
        return;
    line.isReady = true;
    line.sessionID = sessionID;
    line.connectionStart = m_ports.scheduler.now();
    if (m_live.get() == &line)
        becomeReady(line, line.arrival);
}

void ConnectionKeeper::becomeReady(Line& line, Arrival arrival)
{
    m_lastLook = m_ports.scheduler.now();
    m_reconnect.connected(m_lastLook);
    m_isReconnecting = false;
    m_ports.owner.lineBecameReady({arrival, line.sessionID, line.knows});
}

void ConnectionKeeper::noteHandle(Line& line, const std::string& handle)
{
    line.resumption = {handle, m_ports.scheduler.now(), m_ports.owner.settledMark()};
    if (m_live.get() == &line)
        m_resumption = line.resumption;
}

void ConnectionKeeper::noteTurnClosed(SessionTime beganAt)
{
    // A handle that came in the course of the turn came after the model's part in it: services give none before.
    if (m_resumption.resumptionHandle && m_resumption.at > beganAt)
        m_resumption.knows = m_ports.owner.settledMark();
}

void ConnectionKeeper::handleClose(Line& line, const LiveClosure& closure)
{
    if (m_live.get() == &line)
        return liveClosed(closure);
    if (m_standby.get() == &line)
        return standbyClosed(closure);
    if (m_prepared.get() == &line)
        return preparedClosed(closure);
    if (line.farewell == Farewell::reported)
        m_ports.owner.lineEnded(line.endReason);
    takeAwayClosedLines();
}

void ConnectionKeeper::takeAwayClosedLines()
{
    // Later, because a closed connection is still on the way out of its own report.
    m_cleanUp = m_ports.scheduler.after(std::chrono::milliseconds::zero(),
        [this] { std::erase_if(m_retired, [](const auto& line) { return line->isClosed; }); });
}

// ---- A line that is lost

void ConnectionKeeper::liveClosed(const LiveClosure& closure)
{
    m_ports.log.record("session_lost", {{"code", closure.code}, {"reason", closure.reason}});
    const bool wasReady = m_live->isReady;
    const Arrival arrival = wasReady ? Arrival::mended : m_live->arrival;
    m_live->isReady = false;
    if (!wasReady && m_live->isResumed) { // Perhaps refused for the sake of its handle: seeded from now on.
        m_ports.log.record("resumption_refused", Json::object());
        m_resumption = {};
    } else if (arrival == Arrival::first && !closure.retryAfter) {
        return m_ports.owner.linesGivenUp(closure);
    }
    if (closure.mustUserAct)
        return m_ports.owner.linesGivenUp(closure);
    m_reconnect.lost(m_ports.scheduler.now(), m_limits);
    if (m_standby && m_standby->isReady) {
        m_ports.owner.lineLost(closure);
        return switchToStandby(Arrival::mended);
    }
    reconnect(closure, arrival);
}

void ConnectionKeeper::reconnect(const LiveClosure& closure, Arrival arrival)
{
    const auto usual = m_reconnect.next(m_ports.jitter ? m_ports.jitter() : 0.5, m_limits);
    const SessionTime asked = closure.retryAfter.value_or(SessionTime::zero());
    if (!usual || asked > m_limits.longestRetryAfter)
        return m_ports.owner.linesGivenUp(closure);
    const SessionTime wait = std::max(*usual, asked);
    m_ports.log.record("reconnecting", {{"attempt", m_reconnect.attempts}, {"after_ms", wait.count()}});
    const bool isFirstAttempt = !std::exchange(m_isReconnecting, true);
    m_retry = m_ports.scheduler.after(wait, [this, arrival] { openLive(arrival); });
    if (!isFirstAttempt)
        return;
    if (arrival == Arrival::first)
        m_ports.owner.lineDelayed();
    else
        m_ports.owner.lineLost(closure);
}

/// The service has let go of a computer that slept, and the good-bye went past it: nothing will come over the line any
/// more, and whatever is said over it is lost.
void ConnectionKeeper::renewAfterSleep(std::chrono::milliseconds slept)
{
    dropPrepared();
    if (!ready())
        return;
    m_ports.log.record("renewed_after_sleep", {{"slept_ms", slept.count()}});
    renew("slept");
}

void ConnectionKeeper::renew(const std::string& why)
{
    if (!ready())
        return;
    m_ports.log.record("session_renewed", {{"cause", why}});
    if (m_standby)
        retire(std::move(m_standby), why, Farewell::silent);
    m_reconnect = {};
    m_live->isReady = false;
    m_ports.owner.lineLost({LiveClosure::abnormal, why});
    openLive(Arrival::mended);
}

// ---- A line that is replaced

void ConnectionKeeper::look()
{
    const SessionTime now = m_ports.scheduler.now();
    const auto elapsed = now - std::exchange(m_lastLook, now);
    if (elapsed > m_limits.sleep)
        return renewAfterSleep(elapsed);
    rotateIfQuiet();
}

void ConnectionKeeper::rotateIfQuiet()
{
    if (!ready())
        return;
    const SessionTime now = m_ports.scheduler.now();
    m_rotation.noteAge(m_live->connectionStart, now, m_limits);
    if (!m_rotation.rotationWanted)
        return;
    if (m_rotation.isDeferredTooLong(now, m_limits))
        m_ports.log.record(
            "rotation_deferred_too_long", {{"cause", m_rotation.cause}, {"standby", m_standby && m_standby->isReady}});
    if (!m_standby && now >= m_standbyNotBefore)
        openStandby();
    else if (m_standby && m_standby->isReady && m_ports.owner.isQuiet())
        switchToStandby(Arrival::rotated);
}

void ConnectionKeeper::openStandby()
{
    m_standby = makeConnection(Arrival::rotated);
    openLine(*m_standby);
}

void ConnectionKeeper::standbyClosed(const LiveClosure& closure)
{
    m_ports.log.record("standby_lost", {{"code", closure.code}, {"reason", closure.reason}});
    if (!m_standby->isReady && m_standby->isResumed)
        m_resumption = {};
    m_standbyNotBefore = m_ports.scheduler.now() + standbyRetry;
    retire(std::move(m_standby), "lost", Farewell::silent);
    takeAwayClosedLines();
}

void ConnectionKeeper::switchToStandby(Arrival arrival)
{
    retire(std::move(m_live), "rotated", Farewell::silent);
    m_live = std::move(m_standby);
    m_resumption = m_live->resumption;
    m_ports.log.record("session_rotated", {{"cause", m_rotation.cause}, {"lost", arrival == Arrival::mended}});
    m_rotation = {};
    ++m_serial;
    becomeReady(*m_live, arrival);
}

// ---- The end

bool ConnectionKeeper::end(const std::string& reason, Farewell farewell)
{
    m_retry.cancel();
    m_isReconnecting = false;
    m_rotation = {};
    const bool isEndToCome = m_live && !m_live->isClosed && farewell == Farewell::reported;
    dropPrepared();
    if (m_standby)
        retire(std::move(m_standby), reason, Farewell::silent);
    if (m_live)
        retire(std::move(m_live), reason, farewell);
    return isEndToCome;
}

void ConnectionKeeper::retire(std::unique_ptr<Line> line, std::string reason, Farewell farewell)
{
    line->endReason = std::move(reason);
    line->farewell = farewell;
    m_retired.push_back(std::move(line));
    Line& retired = *m_retired.back();
    if (retired.isClosed)
        takeAwayClosedLines();
    else
        retired.connection->close();
}

} // namespace quorvell
