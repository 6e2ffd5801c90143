// SPDX-License-Identifier: MIT
#include "Quorvell/session/connection/ConnectionKeeper.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <utility>

namespace quorvell {

/// One connection and what is known of it. Outlives its use until it has closed.
class ConnectionKeeper::Line : public LiveConnectionObserver {
public:
    Line(std::uint64_t number, Arrival why, const std::function<void(ConnectionFact)>& heard)
        : id(number)
        , arrival(why)
        , m_heard(heard)
    {
    }

    void liveEventReceived(const LiveServerEvent& event) override { m_heard({id, event}); }
    void liveReplyWritten(const std::string& text) override { m_heard({id, ConnectionFact::Written{text}}); }
    void liveReplyGrew(const std::string& delta) override { m_heard({id, ConnectionFact::Grew{delta}}); }
    void liveConnectionClosed(const LiveClosure& closure) override
    {
        if (!std::exchange(hasClosed, true))
            m_heard({id, closure});
    }

    const std::uint64_t id;
    Arrival arrival;
    bool isReady = false;
    bool hasClosed = false; ///< It has said so,
    bool isClosed = false; ///< and the keeper has taken that in.
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
    const std::function<void(ConnectionFact)>& m_heard;
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

void ConnectionKeeper::open(Arrival arrival, const LineBriefing& briefing)
{
    if (arrival == Arrival::first)
        m_resumption = {};
    m_reconnect = {};
    m_isReconnecting = false;
    m_due.reset();
    if (m_prepared)
        takePrepared(arrival);
    else
        openLive(arrival, briefing);
}

void ConnectionKeeper::openDue(const LineBriefing& briefing)
{
    if (const auto arrival = std::exchange(m_due, std::nullopt))
        openLive(*arrival, briefing);
}

void ConnectionKeeper::askForOpening(Arrival arrival)
{
    m_due = arrival;
    m_ports.report(line_report::OpeningDue{});
}

void ConnectionKeeper::openLive(Arrival arrival, const LineBriefing& briefing)
{
    m_retry.cancel();
    m_rotation = {};
    if (m_live)
        retire(std::move(m_live), "lost", Farewell::silent);
    m_live = makeConnection(arrival);
    ++m_serial;
    openLine(*m_live, briefing);
}

void ConnectionKeeper::openLine(Line& line, const LineBriefing& briefing)
{
    LiveSetup setup = briefing.setup;
    setup.resumptionHandle = m_resumption.resumptionHandle;
    line.isResumed = setup.resumptionHandle.has_value();
    line.knows = line.isResumed ? m_resumption.knows : briefing.knows;
    if (line.isResumed)
        setup.history.clear();
    line.connection->open(setup);
}

std::unique_ptr<ConnectionKeeper::Line> ConnectionKeeper::makeConnection(Arrival arrival)
{
    auto line = std::make_unique<Line>(++m_made, arrival, m_ports.heard);
    line->connection = m_ports.connections(*line);
    return line;
}

// ---- A line that is opened in advance

void ConnectionKeeper::prepare(const LineBriefing& briefing)
{
    if (m_live || m_prepared)
        return;
    m_prepared = makeConnection(Arrival::woken);
    openLine(*m_prepared, briefing);
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
        m_ports.report(line_report::UnusedBilled{m_prepared->billedSeconds});
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
        m_ports.report(line_report::UnusedBilled{seconds - line.billedSeconds});
    line.billedSeconds = seconds;
}

int ConnectionKeeper::openLines() const
{
    return (ready() ? 1 : 0) + (m_prepared && m_prepared->isReady ? 1 : 0);
}

// ---- What lines report

ConnectionKeeper::Line* ConnectionKeeper::lineOf(std::uint64_t id)
{
    for (Line* line : {m_live.get(), m_standby.get(), m_prepared.get()})
        if (line && line->id == id)
            return line;
    const auto found = std::ranges::find(m_retired, id, [](const auto& line) { return line->id; });
    return found == m_retired.end() ? nullptr : found->get();
}

void ConnectionKeeper::take(const ConnectionFact& fact, ConversationMemory::Mark settled)
{
    Line* line = lineOf(fact.line);
    if (!line)
        return;
    if (const auto* event = std::get_if<LiveServerEvent>(&fact.what))
        return handleEvent(*line, *event, settled);
    if (const auto* closure = std::get_if<LiveClosure>(&fact.what))
        return handleClose(*line, *closure);
    if (line != m_live.get())
        return;
    if (const auto* written = std::get_if<ConnectionFact::Written>(&fact.what))
        m_ports.report(line_report::Written{written->text});
    if (const auto* grew = std::get_if<ConnectionFact::Grew>(&fact.what))
        m_ports.report(line_report::Grew{grew->delta});
}

void ConnectionKeeper::handleEvent(Line& line, const LiveServerEvent& event, ConversationMemory::Mark settled)
{
    if (const auto* setup = std::get_if<live_event::SetupComplete>(&event))
        return handleSetup(line, setup->sessionID);
    if (const auto* handle = std::get_if<live_event::ResumptionHandle>(&event))
        return noteHandle(line, handle->handle, settled);
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
    m_ports.report(line_report::Event{event});
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
    m_ports.report(line_report::Ready{arrival, line.sessionID, line.knows});
}

void ConnectionKeeper::noteHandle(Line& line, const std::string& handle, ConversationMemory::Mark settled)
{
    line.resumption = {handle, m_ports.scheduler.now(), settled};
    if (m_live.get() == &line)
        m_resumption = line.resumption;
}

void ConnectionKeeper::noteTurnClosed(SessionTime beganAt, ConversationMemory::Mark settled)
{
    // A handle that came in the course of the turn came after the model's part in it: services give none before.
    if (m_resumption.resumptionHandle && m_resumption.at > beganAt)
        m_resumption.knows = settled;
}

void ConnectionKeeper::handleClose(Line& line, const LiveClosure& closure)
{
    line.isClosed = true;
    if (m_live.get() == &line)
        return liveClosed(closure);
    if (m_standby.get() == &line)
        return standbyClosed(closure);
    if (m_prepared.get() == &line)
        return preparedClosed(closure);
    if (line.farewell == Farewell::reported)
        m_ports.report(line_report::Ended{line.endReason});
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
        return m_ports.report(line_report::GivenUp{closure});
    }
    if (closure.mustUserAct)
        return m_ports.report(line_report::GivenUp{closure});
    m_reconnect.lost(m_ports.scheduler.now(), m_limits);
    if (m_standby && m_standby->isReady) {
        m_ports.report(line_report::Lost{});
        return switchToStandby(Arrival::mended);
    }
    reconnect(closure, arrival);
}

void ConnectionKeeper::reconnect(const LiveClosure& closure, Arrival arrival)
{
    const auto usual = m_reconnect.next(m_ports.jitter ? m_ports.jitter() : 0.5, m_limits);
    const SessionTime asked = closure.retryAfter.value_or(SessionTime::zero());
    if (!usual || asked > m_limits.longestRetryAfter)
        return m_ports.report(line_report::GivenUp{closure});
    const SessionTime wait = std::max(*usual, asked);
    m_ports.log.record("reconnecting", {{"attempt", m_reconnect.attempts}, {"after_ms", wait.count()}});
    const bool isFirstAttempt = !std::exchange(m_isReconnecting, true);
    m_retry = m_ports.scheduler.after(wait, [this, arrival] { askForOpening(arrival); });
    if (!isFirstAttempt)
        return;
    if (arrival == Arrival::first)
        m_ports.report(line_report::Delayed{});
    else
        m_ports.report(line_report::Lost{});
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
    m_ports.report(line_report::Lost{});
    askForOpening(Arrival::mended);
}

// ---- A line that is replaced

void ConnectionKeeper::look(Moment moment)
{
    const SessionTime now = m_ports.scheduler.now();
    const auto elapsed = now - std::exchange(m_lastLook, now);
    if (elapsed > m_limits.sleep)
        return renewAfterSleep(elapsed);
    rotateIfQuiet(moment);
}

void ConnectionKeeper::rotateIfQuiet(Moment moment)
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
        m_ports.report(line_report::StandbyDue{});
    else if (m_standby && m_standby->isReady && moment == Moment::quiet)
        switchToStandby(Arrival::rotated);
}

void ConnectionKeeper::openStandby(const LineBriefing& briefing)
{
    if (m_standby || !ready())
        return;
    m_standby = makeConnection(Arrival::rotated);
    openLine(*m_standby, briefing);
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
    m_due.reset();
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
    else if (!retired.hasClosed)
        retired.connection->close();
}

} // namespace quorvell
